#pragma once

#include <QtTest>
#include <QtWidgets>

#include <initializer_list>
#include <memory>
#include <tuple>

/**
 * Base of every test class, with the headers of Qt that tests need. An unexpected warning or critical message fails the
 * test function. The host's settings are in a temporary folder, a new one for each test function.
 */
class GuardedTest : public QObject
{
    Q_OBJECT

protected:
    /// Expects one message; the test function fails without it.
    void expectMessage(QtMsgType type, const QRegularExpression &pattern);

    /// The texts of all messages since the test function began that are of \a type.
    QStringList messages(QtMsgType type) const;

    /// A path in a folder that is deleted after the test function.
    QString temporaryPath(const QString &fileName) const;

    /// Writes a file into that folder; returns its path.
    QString written(const QString &fileName, const QByteArray &bytes) const;

private slots:
    void init();
    void cleanup();

private:
    QScopedPointer<QTemporaryDir> m_folder;
};

/// QVERIFY for helpers: QVERIFY would only leave the helper, and the test would go on. Ends the test program.
#define REQUIRE(condition)                                                                                             \
    do {                                                                                                               \
        if (!(condition)) {                                                                                            \
            qFatal("%s:%d: %s", __FILE__, __LINE__, #condition);                                                       \
        }                                                                                                              \
    } while (false)

/// Generous, for a busy machine: a wait ends when its condition holds.
constexpr int maximumWaitMs = 30000;

/// The lines of a file, and an empty one behind the last line end; none when it cannot be read.
QByteArrayList linesOf(const QString &path);

/// The columns and rows of a data-driven test, each row beginning with its name:
///     testRows<int, QString>({"number", "text"}, {{"one", 1, "I"}, {"five", 5, "V"}});
template<typename... Values>
void testRows(const char *const (&columns)[sizeof...(Values)],
              std::initializer_list<std::tuple<const char *, Values...>> rows)
{
    int column = 0;
    (QTest::addColumn<Values>(columns[column++]), ...);
    for (const auto &row : rows) {
        std::apply([](const char *name, const Values &...values) { (QTest::newRow(name) << ... << values); }, row);
    }
}

/// All of \a parent's children of a kind, to loop over.
template<typename Part> const QList<Part *> partsOf(const QObject &parent)
{
    return parent.findChildren<Part *>();
}

/// The button or action in \a parent whose text, without the mark of its key, begins with \a text.
template<typename Part> Part *partCalled(const QObject &parent, const QString &text)
{
    for (Part *const part : partsOf<Part>(parent)) {
        if (part->text().remove(QLatin1Char('&')).startsWith(text)) {
            return part;
        }
    }
    qFatal("there is no \"%s\"", qPrintable(text));
}

/// The widget in \a parent with this name for screen readers.
template<typename Part> Part *partNamed(const QWidget &parent, const QString &accessibleName)
{
    for (Part *const part : partsOf<Part>(parent)) {
        if (part->accessibleName() == accessibleName) {
            return part;
        }
    }
    qFatal("nothing has the name \"%s\"", qPrintable(accessibleName));
}

/// Fixed style, font and platform, so that pixels are the same everywhere.
void prepareTestEnvironment();
void prepareTestApplication();

/// A test class of a test program, see TestMain.cpp. All of them are in a list that is made before main().
class TestClassEntry
{
public:
    using Factory = std::unique_ptr<QObject> (*)();

    TestClassEntry(const char *className, Factory makesOne) noexcept;

    const char *name;
    Factory factory;
    const TestClassEntry *next;

    static const TestClassEntry *first();
};

/// Makes a test class known to its program.
#define GUARDED_TEST(TestClass)                                                                                        \
    static const TestClassEntry entryOf##TestClass(                                                                    \
        #TestClass, []() -> std::unique_ptr<QObject> { return std::make_unique<TestClass>(); });
