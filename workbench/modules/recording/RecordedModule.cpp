#include "modules/recording/RecordedModule.h"

#include "host/PluginHandler.h"

#include <QDebug>
#include <QFileInfo>

#include <cmath>
#include <limits>

namespace
{

constexpr int commandAxisParameter = 6;
constexpr int commandGlobalParameter = 10;
constexpr int userVariableBank = 2;

Parameter parameterFor(int number, const QString &name, const QString &unit, const QString &suffix)
{
    Parameter parameter;
    parameter.index = number;
    parameter.number = number;
    parameter.key = QStringLiteral("par::recording::%1").arg(number, 3, 10, QLatin1Char('0'));
    parameter.minimum = std::numeric_limits<qint32>::min();
    parameter.maximum = std::numeric_limits<qint32>::max();
    parameter.name = name;
    parameter.unit = unit;
    parameter.nameSuffix = suffix;
    parameter.access = QStringLiteral("r");
    return parameter;
}

} // namespace

RecordedModule::Result RecordedModule::open(const RecordingSettings &settings, const QString &key,
                                            PluginHandler *handler)
{
    Result result;
    RecordingFile::Result opened = RecordingFile::open(settings.file);
    if (opened.file == nullptr) {
        result.error = opened.error;
        return result;
    }
    result.module.reset(new RecordedModule(settings, key, handler, std::move(opened.file)));
    return result;
}

RecordedModule::RecordedModule(const RecordingSettings &settings, const QString &key, PluginHandler *handler,
                               std::unique_ptr<RecordingFile> file)
    : KAROModuleInterface(key.section(QLatin1Char('/'), -1), key, handler, QStringLiteral(":/moreIconsII/XYPlot"))
    , m_file(std::move(file))
    , m_beside(settings.beside)
    , m_playback(m_file->lastStep())
    , m_channel({[this] { goOn(); }, [this](const Command &request) { return read(request); },
                 [this](const Command &request) { return translated(request); },
                 [this]() -> CommandHandlerInterface * {
                     KAROModuleInterface *const module = besideModule();
                     return module == nullptr ? nullptr : module->commandHandlerInterface();
                 }})
{
    apply(settings);
    addParameters();
}

QString RecordedModule::getAliasName() const
{
    // It becomes a field in the header of logs, which quote nothing.
    return QFileInfo(m_file->path()).fileName().replace(QLatin1Char(';'), QLatin1Char('_')).simplified();
}

int RecordedModule::numberOfAxes()
{
    return besideAxes() + m_groups.size();
}

unsigned char RecordedModule::moduleAddress()
{
    return address;
}

CommandHandlerInterface *RecordedModule::commandHandlerInterface()
{
    return &m_channel;
}

int RecordedModule::getChannel()
{
    KAROModuleInterface *const beside = besideModule();
    return beside == nullptr ? 0 : beside->getChannel();
}

QMap<QString, Parameter> *RecordedModule::getParameterMapByName(QString name)
{
    KAROModuleInterface *const beside = besideModule();
    QMap<QString, Parameter> *const fromBeside = beside == nullptr ? nullptr : beside->getParameterMapByName(name);
    if (name == QLatin1String("global2")) {
        m_allVariables = fromBeside == nullptr ? QMap<QString, Parameter>() : *fromBeside;
        for (auto own = m_variables.cbegin(); own != m_variables.cend(); ++own) {
            m_allVariables.insert(own.key(), own.value());
        }
        return &m_allVariables;
    }
    for (int group = 0; group < m_groups.size(); ++group) {
        if (name == QStringLiteral("axis%1").arg(besideAxes() + group)) {
            return &m_groups[group];
        }
    }
    return fromBeside;
}

QList<Register *> RecordedModule::registers() const
{
    const KAROModuleInterface *const beside = besideModule();
    return beside == nullptr ? QList<Register *>() : beside->registers();
}

const RecordingFile &RecordedModule::file() const
{
    return *m_file;
}

Playback &RecordedModule::playback()
{
    return m_playback;
}

const Playback &RecordedModule::playback() const
{
    return m_playback;
}

int RecordedModule::row() const
{
    return m_row;
}

void RecordedModule::setRow(int row)
{
    m_playback.seek(m_file->stepOf(qBound(0, row, m_file->rowCount() - 1)));
    showStep();
}

void RecordedModule::apply(const RecordingSettings &settings)
{
    m_playback.setSpeedTenths(settings.speedTenths);
    m_playback.setRepeated(settings.isRepeated);
    m_playback.setPlaying(settings.isPlaying);
}

QString RecordedModule::trouble() const
{
    return m_file->trouble().isEmpty() ? m_file->change() : m_file->trouble();
}

void RecordedModule::addParameters()
{
    for (const RecordedColumn &column : m_file->columns()) {
        while (m_groups.size() <= column.group) {
            m_groups.append(QMap<QString, Parameter>());
        }
        // Shown with a blank between name and suffix: a name of several words without a unit is divided, so that it is
        // shown and logged as it was.
        const int blank = column.suffix().isEmpty() ? column.name.lastIndexOf(QLatin1Char(' ')) : -1;
        Parameter parameter = parameterFor(column.number, blank < 0 ? column.name : column.name.left(blank),
                                           column.unit, blank < 0 ? column.suffix() : column.name.mid(blank + 1));
        parameter.scale = std::pow(10.0, -column.power);
        parameter.description = column.module;
        m_groups[column.group].insert(parameter.key, parameter);
    }
    const Parameter row = parameterFor(rowNumber, QStringLiteral("Recording: row"), QString(), QString());
    const Parameter time =
        parameterFor(timeNumber, QStringLiteral("Recording: time"), QStringLiteral("ms"), QStringLiteral("[ms]"));
    m_variables = {{row.key, row}, {time.key, time}};
}

void RecordedModule::goOn()
{
    const bool wasAtEnd = m_playback.isAtEnd();
    m_playback.tick();
    showStep();
    if (m_playback.isAtEnd() && !wasAtEnd) {
        qInfo().noquote() << tr("%1: the recording has been played to its end").arg(getAliasName());
    }
    if (!m_file->trouble().isEmpty()) {
        m_playback.setPlaying(false);
    }
}

void RecordedModule::showStep()
{
    m_row = m_file->rowAt(m_playback.step());
}

std::optional<qint32> RecordedModule::read(const Command &request)
{
    if (request.address() != address) {
        return std::nullopt;
    }
    if (request.command() == commandGlobalParameter && request.motorBank() == userVariableBank) {
        const qint64 timeMs = m_playback.step() * Playback::stepMs;
        constexpr qint64 maximum = std::numeric_limits<qint32>::max();
        return request.type() == rowNumber    ? std::make_optional<qint32>(m_row + 1)
               : request.type() == timeNumber ? std::make_optional<qint32>(qMin(maximum, timeMs))
                                              : std::nullopt;
    }
    const int group = request.motorBank() - besideAxes();
    if (request.command() != commandAxisParameter) {
        return std::nullopt;
    }
    const QVector<RecordedColumn> &columns = m_file->columns();
    for (int column = 0; column < columns.size(); ++column) {
        if (columns.at(column).group == group && columns.at(column).number == request.type()) {
            return m_file->value(m_row, column);
        }
    }
    return std::nullopt;
}

std::optional<Command> RecordedModule::translated(const Command &request) const
{
    KAROModuleInterface *const beside = besideModule();
    const bool isOfAxis = request.command() == commandAxisParameter;
    const bool isOwnVariable = request.command() == commandGlobalParameter && request.type() >= rowNumber;
    if (beside == nullptr || request.address() != address || isOwnVariable ||
        (isOfAxis && request.motorBank() >= besideAxes())) {
        return std::nullopt;
    }
    Command passed = request;
    passed.setAddress(beside->moduleAddress());
    return passed;
}

KAROModuleInterface *RecordedModule::besideModule() const
{
    if (m_beside.isEmpty() || handler() == nullptr) {
        return nullptr;
    }
    KAROModuleInterface *const module = handler()->getModulePlugin(m_beside);
    // Two recordings could each be beside the other, and neither would ever answer.
    return qobject_cast<RecordedModule *>(module) == nullptr ? module : nullptr;
}

int RecordedModule::besideAxes() const
{
    KAROModuleInterface *const module = besideModule();
    return module == nullptr ? 0 : module->numberOfAxes();
}
