#include "reading/JsonFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

namespace
{

struct JsonFileText
{
    Q_DECLARE_TR_FUNCTIONS(JsonFile)
};

constexpr qint64 bytesPerKibibyte = 1024;

} // namespace

JsonResult readJsonText(const QByteArray &json, const QString &fileName)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        const int line = 1 + json.left(parseError.offset).count('\n');
        return {{}, JsonFileText::tr("%1:%2: expected JSON: %3").arg(fileName).arg(line).arg(parseError.errorString())};
    }
    if (!document.isObject()) {
        return {{}, JsonFileText::tr("%1: expected an object in braces").arg(fileName)};
    }
    return {document.object(), {}};
}

JsonResult readJsonFile(const QString &path, qint64 maximumBytes)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile()) {
        return {{}, JsonFileText::tr("%1: expected a file").arg(path)};
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {{}, JsonFileText::tr("%1: cannot be read: %2").arg(path, file.errorString())};
    }
    const QByteArray json = file.read(maximumBytes + 1);
    if (json.size() > maximumBytes) {
        return {{}, JsonFileText::tr("%1: expected up to %2 KiB").arg(path).arg(maximumBytes / bytesPerKibibyte)};
    }
    return readJsonText(json, path);
}
