#include "ParameterTable.h"

#include "TableRoles.h"

#include "host/BasicTools.h"
#include "host/HostAccess.h"
#include "host/KAROModuleInterface.h"
#include "host/ParameterType.h"
#include "host/RegisterSet.h"

#include <QCoreApplication>
#include <QIcon>
#include <QStandardItemModel>

#include <array>

namespace
{

constexpr int commandAxisParameter = 6;
constexpr int commandGlobalParameter = 10;
constexpr int commandInputOutput = 15;
constexpr int userVariableBank = 2;
constexpr int parameterNumbers = 256;
constexpr int narrowFieldBits = 3; // fields up to this width are flags, not values to plot
constexpr int fractionLimit = 4;   // a register with more fields than this is regarded as a set of flags

struct ParameterTableText
{
    Q_DECLARE_TR_FUNCTIONS(XYPlotter)
};

QString displayName(const Parameter &parameter)
{
    return parameter.name + QLatin1Char(' ') + parameter.nameSuffix;
}

int numberOf(const Parameter &parameter)
{
    return static_cast<int>(parameter.number);
}

bool isReadable(const Parameter &parameter)
{
    return parameter.access.contains(QLatin1Char('r'));
}

/// The first readable parameter of each number, in key order, under keys that begin with \a keyPrefix.
std::array<const Parameter *, parameterNumbers> firstByNumber(const QMap<QString, Parameter> &parameters,
                                                              const QString &keyPrefix)
{
    std::array<const Parameter *, parameterNumbers> found{};
    for (auto entry = parameters.cbegin(); entry != parameters.cend(); ++entry) {
        const Parameter &parameter = entry.value();
        const int number = numberOf(parameter);
        if (number < 0 || number >= parameterNumbers || !isReadable(parameter) || !entry.key().startsWith(keyPrefix)) {
            continue;
        }
        const Parameter *&place = found[static_cast<std::size_t>(number)];
        if (place == nullptr) {
            place = &parameter;
        }
    }
    return found;
}

/// Writes rows of three items to a model from row 0 on, over rows that it already has.
class RowWriter
{
public:
    explicit RowWriter(QStandardItemModel *model) : m_model(model) {}

    struct Row
    {
        QStandardItem *command;
        QStandardItem *type;
        QStandardItem *name;
    };

    Row append(const QString &commandText, const QString &typeText, const QString &nameText)
    {
        const Row row{new QStandardItem(commandText), new QStandardItem(typeText), new QStandardItem(nameText)};
        m_model->setItem(m_next, TableColumn::Command, row.command);
        m_model->setItem(m_next, TableColumn::Type, row.type);
        m_model->setItem(m_next, TableColumn::Name, row.name);
        ++m_next;
        return row;
    }

    Row appendParameter(const QString &word, int command, int motorBank, const Parameter &parameter)
    {
        const Row row = append(word, QString::number(numberOf(parameter)), displayName(parameter));
        row.command->setData(motorBank, TableRole::MotorBank);
        row.command->setData(command, TableRole::Command);
        row.type->setData(numberOf(parameter), TableRole::Type);
        return row;
    }

    Row appendRegister(const Register &owner, int command, int bitOffset, int bitWidth, const QString &nameText,
                       const QIcon &signIcon)
    {
        const auto address = static_cast<unsigned char>(owner.getOffset());
        const Row row = append(BasicTools::iToHex(address, 2, QStringLiteral("0x")),
                               QStringLiteral("[%0..%1]").arg(bitOffset + bitWidth - 1).arg(bitOffset), nameText);
        row.command->setData(0, TableRole::MotorBank);
        row.command->setData(command, TableRole::Command);
        row.type->setCheckable(true);
        row.type->setToolTip(ParameterTableText::tr("\nSet checked for signed interpretation\n"));
        row.type->setIcon(signIcon);
        row.type->setData(static_cast<int>(address), TableRole::Type);
        row.type->setData(bitOffset, TableRole::BitOffset);
        row.type->setData(bitWidth, TableRole::BitWidth);
        return row;
    }

private:
    QStandardItemModel *const m_model;
    int m_next = 0;
};

void appendAxisParameters(RowWriter &writer, const QMap<QString, Parameter> &parameters, int motor)
{
    for (const Parameter *const parameter : firstByNumber(parameters, QStringLiteral("par::"))) {
        if (parameter == nullptr) {
            continue;
        }
        const auto row = writer.appendParameter(QStringLiteral("GAP"), commandAxisParameter, motor, *parameter);
        row.command->setStatusTip(QStringLiteral("KARO_GAP"));
        row.name->setStatusTip(ParameterTableText::tr("Axis parameter (Motor %1)").arg(motor));
    }
}

void appendUserVariables(RowWriter &writer, const QMap<QString, Parameter> &parameters)
{
    for (const Parameter *const parameter : firstByNumber(parameters, QString())) {
        if (parameter == nullptr) {
            continue;
        }
        const auto row =
            writer.appendParameter(QStringLiteral("GGP"), commandGlobalParameter, userVariableBank, *parameter);
        row.name->setToolTip(ParameterTableText::tr("Bank 2"));
        row.name->setStatusTip(ParameterTableText::tr("User variables (Bank 2)"));
    }
}

struct InputOutputGroup
{
    QString mapName;
    int bank;
    // Inputs and outputs belong to the whole module: these texts call their bank a motor, independently of the motor
    // shown.
    const char *toolTip;
    const char *statusTip;
};

const std::array<InputOutputGroup, 3> inputOutputGroups{{
    {HostAccess::text(ParameterType::DigitalInput), 0, QT_TRANSLATE_NOOP("XYPlotter", "Axis 0"),
     QT_TRANSLATE_NOOP("XYPlotter", "Digital input (Motor 0)")},
    {HostAccess::text(ParameterType::DigitalOutput), 2, QT_TRANSLATE_NOOP("XYPlotter", "Axis 2"),
     QT_TRANSLATE_NOOP("XYPlotter", "Digital output (Motor 2)")},
    {HostAccess::text(ParameterType::AnalogInput), 1, QT_TRANSLATE_NOOP("XYPlotter", "Axis 1"),
     QT_TRANSLATE_NOOP("XYPlotter", "Analog input (Motor 1)")},
}};

void appendInputsAndOutputs(RowWriter &writer, const QMap<QString, Parameter> &parameters,
                            const InputOutputGroup &group)
{
    for (const Parameter &parameter : parameters) {
        if (!isReadable(parameter)) {
            continue;
        }
        const auto row = writer.appendParameter(QStringLiteral("GIO"), commandInputOutput, group.bank, parameter);
        row.name->setToolTip(ParameterTableText::tr(group.toolTip));
        row.name->setStatusTip(ParameterTableText::tr(group.statusTip));
    }
}

QList<Register *> fractionsOf(Register *candidate)
{
    // By class name: qobject_cast would fail if this plugin and the host had separate copies of the meta-object.
    void *const set = candidate->qt_metacast("RegisterSet");
    return set == nullptr ? QList<Register *>() : HostAccess::fractions(*static_cast<RegisterSet *>(set));
}

} // namespace

void ParameterTable::fillAxisTable(QStandardItemModel *model, KAROModuleInterface *module, int motor)
{
    model->setHorizontalHeaderLabels(
        {ParameterTableText::tr("Cmd"), ParameterTableText::tr("Type"), ParameterTableText::tr("Name")});
    RowWriter writer(model);
    if (const auto *const axis = module->getParameterMapByName(QStringLiteral("axis%1").arg(motor))) {
        appendAxisParameters(writer, *axis, motor);
    }
    if (const auto *const variables = module->getParameterMapByName(QStringLiteral("global2"))) {
        appendUserVariables(writer, *variables);
    }
    for (const InputOutputGroup &group : inputOutputGroups) {
        if (const auto *const parameters = module->getParameterMapByName(group.mapName)) {
            appendInputsAndOutputs(writer, *parameters, group);
        }
    }
}

void ParameterTable::fillRegisterTable(QStandardItemModel *model, const QList<Register *> &registers, int command,
                                       const QIcon &signIcon)
{
    model->setHorizontalHeaderLabels(
        {ParameterTableText::tr("Offset"), ParameterTableText::tr("Mapped bits"), ParameterTableText::tr("Title")});
    RowWriter writer(model);
    for (Register *const entry : registers) {
        const QList<Register *> fractions = fractionsOf(entry);
        const int width = static_cast<int>(entry->getWidth());
        if (fractions.isEmpty() && width > narrowFieldBits) {
            const auto row = writer.appendRegister(*entry, command, 0, width, entry->getTitle(), signIcon);
            row.name->setToolTip(entry->getDescription());
        }
        // Neither the fields nor the whole of a register with more fractions than the limit are offered.
        if (fractions.size() > fractionLimit) {
            continue;
        }
        for (const Register *const fraction : fractions) {
            const int fractionWidth = static_cast<int>(fraction->getWidth());
            if (fractionWidth <= narrowFieldBits) {
                continue;
            }
            const auto row =
                writer.appendRegister(*entry, command, static_cast<int>(fraction->getOffset()), fractionWidth,
                                      entry->getTitle() + QStringLiteral(": ") + fraction->getTitle(), signIcon);
            row.command->setToolTip(ParameterTableText::tr("\nRegister ") + entry->getTitle() + QLatin1Char('\n'));
            row.name->setToolTip(fraction->getDescription());
        }
    }
    model->sort(TableColumn::Name, Qt::AscendingOrder);
}

QString ParameterTable::caption(const QAbstractItemModel *model)
{
    return model == nullptr ? QString() : model->headerData(0, Qt::Horizontal, TableRole::Caption).toString();
}
