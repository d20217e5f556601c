#pragma once

#include <QPluginLoader>
#include <QString>

class ContainerInterface;

/**
 * A container plugin's file: read, checked, loaded, and unloaded at the end.
 *
 * The file's metadata is checked before any of its code runs. Owns the plugin's root object, which serves
 * as the prototype of all clones; they have to be destroyed before this. GUI thread.
 */
class PluginFile
{
public:
    PluginFile() = default;
    ~PluginFile();

    /**
     * Loads the file at \a path; to be called until it succeeds, and not again.
     * \return an empty text, or one line that names the file and says why it is of no use; nothing is loaded then
     */
    QString load(const QString &path);

    /// Destroys the root object and unmaps the file; false when something else still holds the file.
    bool unload();

    /// The plugin's root object; null unless load() succeeded.
    ContainerInterface *root() const;

    /// The absolute path of the file; empty before load().
    QString path() const;

private:
    Q_DISABLE_COPY(PluginFile)

    QString checkMetaData() const;
    QString loadRoot();

    QPluginLoader m_loader;
    ContainerInterface *m_root = nullptr; // owned by the loader
};
