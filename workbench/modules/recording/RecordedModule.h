#pragma once

#include "modules/recording/Playback.h"
#include "modules/recording/RecordedChannel.h"
#include "modules/recording/RecordingFile.h"
#include "modules/recording/RecordingSettings.h"

#include "host/KAROModuleInterface.h"

#include <memory>

/**
 * A module that plays a recording: its values are the columns of a file, and go on by a row each time that containers
 * sample.
 *
 * Each curve of a log is an axis with X and Y; the columns of other files are one axis. The row and the time of the
 * recording are user variables. With a module beside it, all values of that are offered, too, before its own: so a
 * container, whose curves share one module, shows both in one plot. Owned by the registry that it is added to, like
 * every module. GUI thread.
 */
class RecordedModule : public KAROModuleInterface
{
    Q_OBJECT

public:
    static constexpr unsigned char address = 100; ///< of every request
    static constexpr int rowNumber = 254;         ///< user variable: row of the file's data, from 1
    static constexpr int timeNumber = 255;        ///< user variable: ms since the first row, at the recording's speed

    /// A module, or one line that says what is wrong with the file.
    struct Result
    {
        std::unique_ptr<RecordedModule> module;
        QString error;
    };

    /**
     * Opens the file of \a settings.
     * \param key     the key for the registry, for example "REC0/run"
     * \param handler the registry, where the module beside is looked for
     */
    static Result open(const RecordingSettings &settings, const QString &key, PluginHandler *handler);

    QString getAliasName() const override;
    int numberOfAxes() override;
    unsigned char moduleAddress() override;
    CommandHandlerInterface *commandHandlerInterface() override;
    int getChannel() override;
    QMap<QString, Parameter> *getParameterMapByName(QString name) override;
    QList<Register *> registers() const override;

    const RecordingFile &file() const;
    Playback &playback();
    const Playback &playback() const;

    /// The row that is read at present, from 0 to below file().rowCount().
    int row() const;
    void setRow(int row); ///< Clamped.

    /// Plays as \a settings say; their file and the module beside are left aside.
    void apply(const RecordingSettings &settings);

    /// What is wrong with the file, one line; empty when nothing is. Looks at the disk.
    QString trouble() const;

private:
    RecordedModule(const RecordingSettings &settings, const QString &key, PluginHandler *handler,
                   std::unique_ptr<RecordingFile> file);

    void addParameters();
    void goOn();
    void showStep();
    std::optional<qint32> read(const Command &request);
    std::optional<Command> translated(const Command &request) const;
    KAROModuleInterface *besideModule() const;
    int besideAxes() const;

    const std::unique_ptr<RecordingFile> m_file;
    const QString m_beside;
    Playback m_playback;
    RecordedChannel m_channel;
    int m_row = 0;
    QMap<QString, Parameter> m_variables;
    QMap<QString, Parameter> m_allVariables; // with those of the module beside
    QList<QMap<QString, Parameter>> m_groups;
};
