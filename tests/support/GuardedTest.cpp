#include "GuardedTest.h"

#include "host/AppSettings.h"

#include <QFont>
#include <QStyleFactory>

namespace
{

struct Message
{
    QtMsgType type;
    QString text;
};

struct Expectation
{
    QtMsgType type;
    QRegularExpression pattern;
};

QtMessageHandler previousHandler = nullptr;
QVector<Message> seen;
QVector<Expectation> expected;

void record(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    // The offscreen platform says so of every window that is shown or raised.
    if (!text.startsWith(QStringLiteral("This plugin does not support "))) {
        seen.append({type, text});
    }
    if (type == QtFatalMsg && previousHandler != nullptr) {
        previousHandler(type, context, text);
    }
}

} // namespace

void GuardedTest::expectMessage(QtMsgType type, const QRegularExpression &pattern)
{
    expected.append({type, pattern});
}

QStringList GuardedTest::messages(QtMsgType type) const
{
    QStringList texts;
    for (const Message &message : qAsConst(seen)) {
        if (message.type == type) {
            texts.append(message.text);
        }
    }
    return texts;
}

QString GuardedTest::temporaryPath(const QString &fileName) const
{
    return m_folder->filePath(fileName);
}

void GuardedTest::init()
{
    seen.clear();
    expected.clear();
    m_folder.reset(new QTemporaryDir);
    QVERIFY(m_folder->isValid());
    AppSettings::setStoreFile(temporaryPath(QStringLiteral("settings.ini")));
    previousHandler = qInstallMessageHandler(record);
}

void GuardedTest::cleanup()
{
    qInstallMessageHandler(previousHandler);
    AppSettings::setStoreFile(QString());
    QStringList unexpected;
    for (const Message &message : qAsConst(seen)) {
        const auto announced = std::find_if(expected.begin(), expected.end(), [&](const Expectation &expectation) {
            return expectation.type == message.type && expectation.pattern.match(message.text).hasMatch();
        });
        if (announced != expected.end()) {
            expected.erase(announced);
        } else if (message.type == QtWarningMsg || message.type == QtCriticalMsg) {
            unexpected.append(message.text);
        }
    }
    QStringList missing;
    for (const Expectation &expectation : qAsConst(expected)) {
        missing.append(expectation.pattern.pattern());
    }
    m_folder.reset();
    QVERIFY2(unexpected.isEmpty(), qPrintable(QStringLiteral("unexpected: ") + unexpected.join(QLatin1Char('\n'))));
    QVERIFY2(missing.isEmpty(), qPrintable(QStringLiteral("never came: ") + missing.join(QLatin1Char('\n'))));
}

void prepareTestEnvironment()
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    qputenv("QT_SCALE_FACTOR", "1");
}

void prepareTestApplication()
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
}
