#include "setup/SimulationFields.h"

#include "modules/simulation/ModuleKind.h"
#include "reading/FieldReader.h"
#include "reading/TextLists.h"

#include <QCoreApplication>

#include <limits>

namespace
{

constexpr int maximumAnswerTimeMs = 1000;

struct SimulationFieldsText
{
    Q_DECLARE_TR_FUNCTIONS(SimulationFields)
};

const QMap<QString, MotionProgram::Kind> &motionKinds()
{
    static const QMap<QString, MotionProgram::Kind> kinds = {
        {QStringLiteral("hold"), MotionProgram::Kind::Hold},
        {QStringLiteral("reciprocate"), MotionProgram::Kind::Reciprocate},
        {QStringLiteral("sine"), MotionProgram::Kind::Sine},
    };
    return kinds;
}

MotionProgram readMotion(FieldReader &reader, const QJsonObject &axis, const QString &place)
{
    MotionProgram motion;
    motion.kind = motionKinds().value(reader.choice(axis, place, QStringLiteral("motion"), motionKinds().keys()));
    motion.amplitude = reader.number(axis, place, QStringLiteral("amplitude"), motion.amplitude);
    motion.periodSeconds = reader.number(axis, place, QStringLiteral("periodSeconds"), motion.periodSeconds);
    motion.phaseDegrees = reader.number(axis, place, QStringLiteral("phaseDegrees"), motion.phaseDegrees);
    motion.offset = reader.number(axis, place, QStringLiteral("offset"), motion.offset);
    if (motion.amplitude < 0.0) {
        reader.addError(place, QStringLiteral("amplitude"),
                        SimulationFieldsText::tr("a number of microsteps, 0 or more"));
    }
    if (motion.periodSeconds <= 0.0) {
        reader.addError(place, QStringLiteral("periodSeconds"),
                        SimulationFieldsText::tr("a number of seconds above 0"));
    }
    return motion;
}

QJsonObject writeMotion(int axis, const MotionProgram &motion)
{
    return {
        {QStringLiteral("axis"), axis},
        {QStringLiteral("motion"), motionKinds().key(motion.kind)},
        {QStringLiteral("amplitude"), motion.amplitude},
        {QStringLiteral("periodSeconds"), motion.periodSeconds},
        {QStringLiteral("phaseDegrees"), motion.phaseDegrees},
        {QStringLiteral("offset"), motion.offset},
    };
}

/// Which axes a kind of module has to offer, for a person.
QString expectedAxis(const QString &kind, int axes)
{
    if (axes == 0) {
        return SimulationFieldsText::tr("no motion, because %1 has no axes").arg(kind);
    }
    return axes == 1 ? SimulationFieldsText::tr("0, because %1 has this axis only").arg(kind)
                     : SimulationFieldsText::tr("a whole number from 0 to %1, the axes of %2").arg(axes - 1).arg(kind);
}

void readAxes(FieldReader &reader, const QJsonObject &object, const QString &place, SimulationSettings &settings)
{
    const ModuleKind *const kind = findModuleKind(settings.kind);
    const int axisCount = kind == nullptr ? 0 : int(kind->axes.size());
    const QList<QJsonObject> axes = reader.objects(object, place, QStringLiteral("axes"), false);
    for (int i = 0; i < axes.size(); ++i) {
        const QString axisPlace = FieldReader::placeOf(place, QStringLiteral("axes"), i);
        reader.allowOnly(axes.at(i), axisPlace,
                         {QStringLiteral("axis"), QStringLiteral("motion"), QStringLiteral("amplitude"),
                          QStringLiteral("periodSeconds"), QStringLiteral("phaseDegrees"), QStringLiteral("offset")});
        using Limits = std::numeric_limits<int>;
        const int axis =
            int(reader.integer(axes.at(i), axisPlace, QStringLiteral("axis"), Limits::min(), Limits::max(), i));
        if (axis < 0 || axis >= axisCount) {
            reader.addError(axisPlace, QStringLiteral("axis"), expectedAxis(settings.kind, axisCount));
        }
        if (settings.motions.contains(axis)) {
            reader.addError(axisPlace, QStringLiteral("axis"),
                            SimulationFieldsText::tr("an axis that has no motion yet"));
        }
        settings.motions.insert(axis, readMotion(reader, axes.at(i), axisPlace));
    }
}

decltype(ModuleSettings::family) readSimulation(FieldReader &reader, const QJsonObject &object, const QString &place)
{
    SimulationSettings settings;
    settings.kind = object.value(QStringLiteral("kind")).toString();
    readAxes(reader, object, place, settings);
    settings.isMoving = reader.boolean(object, place, QStringLiteral("moving"), settings.isMoving);
    settings.isSilent = reader.boolean(object, place, QStringLiteral("silent"), settings.isSilent);
    settings.answerTimeMs = int(
        reader.integer(object, place, QStringLiteral("answerTimeMs"), 0, maximumAnswerTimeMs, settings.answerTimeMs));
    return settings;
}

QJsonObject writeSimulation(const ModuleSettings &module)
{
    const auto *const settings = std::get_if<SimulationSettings>(&module.family);
    if (settings == nullptr) {
        return {};
    }
    QJsonArray axes;
    for (auto motion = settings->motions.cbegin(); motion != settings->motions.cend(); ++motion) {
        axes.append(writeMotion(motion.key(), motion.value()));
    }
    return {
        {QStringLiteral("kind"), settings->kind},
        {QStringLiteral("axes"), axes},
        {QStringLiteral("moving"), settings->isMoving},
        {QStringLiteral("silent"), settings->isSilent},
        {QStringLiteral("answerTimeMs"), settings->answerTimeMs},
    };
}

} // namespace

ModuleFields simulationFields()
{
    QStringList kinds;
    for (const ModuleKind &kind : simulatedModuleKinds()) {
        kinds.append(QString::fromUtf8(kind.name));
    }
    return {
        kinds,
        {QStringLiteral("axes"), QStringLiteral("moving"), QStringLiteral("silent"), QStringLiteral("answerTimeMs")},
        readSimulation,
        writeSimulation};
}
