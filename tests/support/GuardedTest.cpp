#include "GuardedTest.h"

#include "host/AppSettings.h"

#include <QFont>
#include <QStyleFactory>

namespace
{

QtMessageHandler previousHandler = nullptr;
QVector<QPair<QtMsgType, QString>> seen;
QVector<QPair<QtMsgType, QRegularExpression>> expected;

void record(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    // The offscreen platform prints this for every window that is shown or raised.
    if (!text.startsWith(QStringLiteral("This plugin does not support "))) {
        seen.append({type, text});
    }
    if (type == QtFatalMsg && previousHandler != nullptr) {
        previousHandler(type, context, text);
    }
}

const TestClassEntry *firstTestClass = nullptr;

} // namespace

TestClassEntry::TestClassEntry(const char *className, Factory makesOne) noexcept
    : name(className), factory(makesOne), next(firstTestClass)
{
    firstTestClass = this;
}

const TestClassEntry *TestClassEntry::first()
{
    return firstTestClass;
}

void GuardedTest::expectMessage(QtMsgType type, const QRegularExpression &pattern)
{
    expected.append({type, pattern});
}

QStringList GuardedTest::messages(QtMsgType type) const
{
    QStringList texts;
    for (const auto &message : qAsConst(seen)) {
        if (message.first == type) {
            texts.append(message.second);
        }
    }
    return texts;
}

QString GuardedTest::temporaryPath(const QString &fileName) const
{
    return m_folder->filePath(fileName);
}

QString GuardedTest::written(const QString &fileName, const QByteArray &bytes) const
{
    QFile file(temporaryPath(fileName));
    REQUIRE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    return file.fileName();
}

QByteArrayList linesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().split('\n') : QByteArrayList();
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
    QStringList faults;
    for (const auto &message : qAsConst(seen)) {
        const auto match = std::find_if(expected.begin(), expected.end(), [&](const auto &expectation) {
            return expectation.first == message.first && expectation.second.match(message.second).hasMatch();
        });
        if (match != expected.end()) {
            expected.erase(match);
        } else if (message.first == QtWarningMsg || message.first == QtCriticalMsg) {
            faults.append(QStringLiteral("unexpected: ") + message.second);
        }
    }
    for (const auto &expectation : qAsConst(expected)) {
        faults.append(QStringLiteral("missing: ") + expectation.second.pattern());
    }
    m_folder.reset();
    QVERIFY2(faults.isEmpty(), qPrintable(faults.join(QLatin1Char('\n'))));
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
