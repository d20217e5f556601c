#pragma once

#include <QApplication>
#include <QObject>
#include <QRegularExpression>
#include <QStringList>
#include <QTemporaryDir>
#include <QtTest>

/**
 * Base of every test class: any warning or critical message that a test function did not announce fails it, and the
 * host's settings live in a temporary folder that is new for each test function.
 */
class GuardedTest : public QObject
{
    Q_OBJECT

protected:
    /// Announces a message; the test function fails when it does not come. Every message needs its own call.
    void expectMessage(QtMsgType type, const QRegularExpression &pattern);

    /// The texts of all messages since the test function began that are of \a type.
    QStringList messages(QtMsgType type) const;

    /// A folder that lives as long as the test function.
    QString temporaryPath(const QString &fileName) const;

private slots:
    void init();
    void cleanup();

private:
    QScopedPointer<QTemporaryDir> m_folder;
};

/// Fixed style, font and platform, so that pixels are the same everywhere.
void prepareTestEnvironment();
void prepareTestApplication();

/// The main function of a test program of one test class.
#define GUARDED_TEST_MAIN(TestClass)                                                                                   \
    int main(int argc, char **argv)                                                                                    \
    {                                                                                                                  \
        prepareTestEnvironment();                                                                                      \
        QApplication application(argc, argv);                                                                          \
        prepareTestApplication();                                                                                      \
        TestClass test;                                                                                                \
        return QTest::qExec(&test, argc, argv);                                                                        \
    }
