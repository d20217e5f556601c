#include "window/PluginFile.h"

#include "host/ContainerInterface.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QJsonObject>
#include <QJsonValue>

namespace
{

struct PluginFileText
{
    Q_DECLARE_TR_FUNCTIONS(PluginFile)
};

} // namespace

PluginFile::~PluginFile()
{
    unload();
}

QString PluginFile::load(const QString &path)
{
    const QString shownPath = QFileInfo(path).filePath();
    if (!QFileInfo::exists(path)) {
        return PluginFileText::tr("%1: there is no such plugin file").arg(shownPath);
    }
    m_loader.setFileName(QFileInfo(path).absoluteFilePath());
    // Missing symbols have to show at loading, not in the middle of a session; and unloading has to be real.
    m_loader.setLoadHints(QLibrary::ResolveAllSymbolsHint);

    QString problem = checkMetaData();
    if (problem.isEmpty()) {
        problem = loadRoot();
    }
    return problem.isEmpty() ? QString() : shownPath + QStringLiteral(": ") + problem.simplified();
}

QString PluginFile::checkMetaData() const
{
    const QJsonObject metaData = m_loader.metaData();
    const QString iid = metaData.value(QStringLiteral("IID")).toString();
    if (iid.isEmpty()) {
        return PluginFileText::tr("this file is no plugin");
    }
    if (iid != QLatin1String(ContainerInterface_iid)) {
        return PluginFileText::tr("this plugin is made for the interface \"%1\", not for \"%2\"")
            .arg(iid, QLatin1String(ContainerInterface_iid));
    }
    if (metaData.value(QStringLiteral("className")).toString().isEmpty()) {
        return PluginFileText::tr("this plugin does not name its class");
    }
    const QString name = metaData.value(QStringLiteral("MetaData")).toObject().value(QStringLiteral("name")).toString();
    if (name != QLatin1String("Container")) {
        return PluginFileText::tr("this plugin calls itself \"%1\", not \"Container\"").arg(name);
    }
    return {};
}

QString PluginFile::loadRoot()
{
    if (!m_loader.load()) {
        return PluginFileText::tr("this plugin cannot be loaded: %1").arg(m_loader.errorString());
    }
    QObject *const instance = m_loader.instance();
    const QString className = m_loader.metaData().value(QStringLiteral("className")).toString();
    m_root = qobject_cast<ContainerInterface *>(instance);
    if (m_root == nullptr) {
        m_loader.unload();
        return PluginFileText::tr("this plugin's object \"%1\" is no container").arg(className);
    }
    if (!m_root->inherits(className.toLatin1().constData())) {
        unload();
        return PluginFileText::tr("this plugin's object is no \"%1\", as which it is announced").arg(className);
    }
    return {};
}

bool PluginFile::unload()
{
    if (m_root == nullptr) {
        return true;
    }
    m_root = nullptr;
    return m_loader.unload();
}

ContainerInterface *PluginFile::root() const
{
    return m_root;
}

QString PluginFile::path() const
{
    return m_loader.fileName();
}
