// Every declaration of the host that the plugin and the plot widget use, checked by the compiler before anything else is
// compiled for another host. A failed assertion says which forwarding header has to change, and how. Nothing is run.

#include "host/AppSettings.h"
#include "host/BasicTools.h"
#include "host/ComboBox.h"
#include "host/CommandHandlerInterface.h"
#include "host/ContainerInterface.h"
#include "host/CurveColors.h"
#include "host/DynamicProperty.h"
#include "host/ExportCSV.h"
#include "host/HostAccess.h"
#include "host/HostLogging.h"
#include "host/KAROModuleInterface.h"
#include "host/ParameterType.h"
#include "host/PluginHandler.h"
#include "host/RegisterSet.h"

#include <QAbstractButton>
#include <QStandardItemModel>

#include <type_traits>

namespace
{

/// Whether \a call compiles with an object of that class, and with what result.
template<typename Result, typename Object, typename Call> constexpr bool gives(Call)
{
    return std::is_invocable_r_v<Result, Call, Object &>;
}

#define GIVES(Result, Object, expression, message)                                                                     \
    static_assert(gives<Result, Object>([](auto &object) -> decltype(expression) { return expression; }), message)
// What an operation returns is of no account.
#define CALLABLE(Object, expression, message)                                                                          \
    static_assert(gives<void, Object>([](auto &object) -> decltype(expression) { return expression; }), message)

template<typename Class> constexpr bool hasMetaObject = QtPrivate::HasQ_OBJECT_Macro<Class>::Value != 0;

// The plugin's bases, what it overrides there, and the name under which the host asks for it.
static_assert(std::is_base_of_v<QWidget, PluginInterface> && std::is_base_of_v<PluginInterface, ContainerInterface>,
              "host/ContainerInterface.h: ContainerInterface has to be a PluginInterface, and that a QWidget");
static_assert(hasMetaObject<ContainerInterface>, "host/ContainerInterface.h: ContainerInterface lacks Q_OBJECT");
class Container : public ContainerInterface
{
public:
    using ContainerInterface::ContainerInterface;
    // Here a host shows whose operations are not virtual, or take something else.
    Container *clone(QString name, PluginHandler *handler) override;
    void init(QWidget *parent) override;
    void handleModulePlugin(KAROModuleInterface *module, QString name) override;
    void finished(int code) override;
    static PluginHandler *handlerOf(Container &container)
    {
        return container.pluginHandler();
    }
};
GIVES(QString, Container, object.version(), "host/ContainerInterface.h: version() has to be a QString");
static_assert(
    std::is_constructible_v<Container, QString, QString, int, PluginHandler *, QString, QWidget *>,
    "host/ContainerInterface.h: ContainerInterface(name, title, type, handler, icon path, parent) is missing");
GIVES(const char *, ContainerInterface, (static_cast<void>(object), qobject_interface_iid<ContainerInterface *>()),
      "host/ContainerInterface.h: Q_DECLARE_INTERFACE(ContainerInterface, ContainerInterface_iid) is missing");

// Modules and their registry.
static_assert(std::is_base_of_v<QObject, KAROModuleInterface>,
              "host/KAROModuleInterface.h has to include the declaration of KAROModuleInterface, a QObject");
GIVES(QString, KAROModuleInterface, object.name(), "host/KAROModuleInterface.h: name() of a module is missing");
GIVES(QString, const KAROModuleInterface, object.key(), "host/KAROModuleInterface.h: key() const is missing");
GIVES(QString, const KAROModuleInterface, object.getAliasName(),
      "host/KAROModuleInterface.h: getAliasName() const is missing");
GIVES(int, KAROModuleInterface, static_cast<int>(object.numberOfAxes()),
      "host/KAROModuleInterface.h: numberOfAxes() has to be a number");
GIVES(unsigned char, KAROModuleInterface, static_cast<unsigned char>(object.moduleAddress()),
      "host/KAROModuleInterface.h: moduleAddress() has to be a number");
GIVES(int, KAROModuleInterface, static_cast<int>(object.getChannel()),
      "host/KAROModuleInterface.h: getChannel() has to be a number");
GIVES(CommandHandlerInterface *, KAROModuleInterface, object.commandHandlerInterface(),
      "host/KAROModuleInterface.h: commandHandlerInterface() has to be a CommandHandlerInterface *");
using ParameterMap = QMap<QString, Parameter>;
GIVES(const ParameterMap *, KAROModuleInterface, object.getParameterMapByName(QString()),
      "host/KAROModuleInterface.h: getParameterMapByName(QString) has to be a QMap<QString, Parameter> *");
GIVES(int, const Parameter, static_cast<int>(object.number), "host/KAROModuleInterface.h: Parameter lacks its number");
GIVES(QString, const Parameter, object.name + QLatin1Char(' ') + object.nameSuffix,
      "host/KAROModuleInterface.h: Parameter lacks its name or nameSuffix");
GIVES(bool, const Parameter, object.access.contains(QLatin1Char('r')),
      "host/KAROModuleInterface.h: Parameter lacks its access");
GIVES(QStringList, PluginHandler, object.getModulePluginKeys(false),
      "host/PluginHandler.h: getModulePluginKeys(bool) has to be a QStringList");

// The command channel.
static_assert(std::is_default_constructible_v<Command> && std::is_copy_constructible_v<Command> &&
                  std::is_copy_assignable_v<Command>,
              "host/CommandCombo.h: Command has to be a value that can be made and copied");
GIVES(qint32, Command, static_cast<qint32>(object.value()), "host/CommandCombo.h: value() has to be a number");
using Byte = unsigned char;
CALLABLE(Command, object.setAddress(Byte()), "host/CommandCombo.h: Command::setAddress(unsigned char) is missing");
CALLABLE(Command, object.setCommand(Byte()), "host/CommandCombo.h: Command::setCommand(unsigned char) is missing");
CALLABLE(Command, object.setType(Byte()), "host/CommandCombo.h: Command::setType(unsigned short) is missing");
CALLABLE(Command, object.setMotorBank(Byte()), "host/CommandCombo.h: Command::setMotorBank(unsigned char) is missing");
CALLABLE(CommandHandlerInterface, object.sendCommandCombos({static_cast<CommandCombo *>(nullptr)}),
         "host/CommandHandlerInterface.h: sendCommandCombos(QList<CommandCombo *>) is missing");
CALLABLE(CommandHandlerInterface, object.setCircularMode(false),
         "host/CommandHandlerInterface.h: setCircularMode(bool) is missing");

// Registers.
static_assert(std::is_base_of_v<QObject, Register> && std::is_base_of_v<Register, RegisterSet>,
              "host/RegisterSet.h: RegisterSet has to be a Register, and that a QObject");
GIVES(int, const Register, static_cast<int>(object.getOffset()) + static_cast<int>(object.getWidth()),
      "host/RegisterSet.h: Register lacks getOffset() const or getWidth() const");
GIVES(QString, const Register, object.getTitle() + QLatin1String(": ") + object.getTitle(),
      "host/RegisterSet.h: Register lacks getTitle() const");
GIVES(QString, const Register, object.getDescription(), "host/RegisterSet.h: Register lacks getDescription() const");
static_assert(std::is_constructible_v<TempTools, int, int, std::nullptr_t, QString, unsigned char, unsigned char>,
              "host/TempTools.h: TempTools(1, 1, nullptr, QString(), 149, 147) is missing");
GIVES(bool, TempTools, object.fillCurrentRegisterList(nullptr, {1, 3}),
      "host/TempTools.h: fillCurrentRegisterList(KAROModuleInterface *, QList<int>) has to be a bool");

// Widgets and settings.
static_assert(std::is_base_of_v<QSettings, AppSettings> && std::is_default_constructible_v<AppSettings>,
              "host/AppSettings.h: AppSettings has to be a QSettings that can be made without arguments");
static_assert(std::is_base_of_v<QComboBox, ComboBox> && std::is_constructible_v<ComboBox, QWidget *>,
              "host/ComboBox.h: ComboBox(QWidget *) has to be a QComboBox");
static_assert(hasMetaObject<ComboBox>, "host/ComboBox.h: ComboBox lacks Q_OBJECT, by which it is found");
CALLABLE(ComboBox, object.resetLastIndex(), "host/ComboBox.h: resetLastIndex() is missing");
CALLABLE(ComboBox, object.clear(), "host/ComboBox.h: clear() cannot be called");
CALLABLE(ComboBox, object.setCurrentIndex(-1), "host/ComboBox.h: setCurrentIndex(int) cannot be called");
static_assert(std::is_base_of_v<QObject, ExportCSV> &&
                  std::is_constructible_v<ExportCSV, QStandardItemModel *, QWidget *, Qt::WindowType>,
              "host/ExportCSV.h: ExportCSV(QStandardItemModel *, QWidget *, Qt::WindowFlags) is missing");

// Functions, called as they are called. All that a class of functions and a namespace have in common is the spelling.
template<typename Number, typename Ticks>
auto round(Number low, Number high, Ticks ticks) -> decltype(BasicTools::adjustLinearAxis(low, high, ticks));
template<typename Button>
auto tint(Button *button) -> decltype(BasicTools::setButtonIconsColor(button, QColor(), QColor(), QColor()));
GIVES(const QLoggingCategory &, const int, (static_cast<void>(object), debLowLevel()),
      "host/HostLogging.h: debLowLevel() has to be a QLoggingCategory &");
CALLABLE(double, round(object, object, 1U),
         "host/BasicTools.h: BasicTools::adjustLinearAxis(double &, double &, unsigned int &) is missing");
CALLABLE(QAbstractButton, tint(&object),
         "host/BasicTools.h: BasicTools::setButtonIconsColor(QAbstractButton *, QColor, QColor, QColor) is missing");
GIVES(QString, double, BasicTools::intInsertDot(object, 0),
      "host/BasicTools.h: BasicTools::intInsertDot(double, int) has to be a QString");
GIVES(QString, unsigned char, BasicTools::iToHex(object, 2, QString()),
      "host/BasicTools.h: BasicTools::iToHex(unsigned char, int, QString) has to be a QString");
GIVES(QString, QWidget, BasicTools::ExportPNG(&object, QString()),
      "host/BasicTools.h: BasicTools::ExportPNG(QWidget *, QString) has to be a QString");

// What differs between hosts: the assertions are in the bodies.
[[maybe_unused]] QList<Register *> accessed(TempTools &tools, RegisterSet &set, PluginHandler &handler)
{
    CommandCombo pair(HostAccess::emptyPair<CommandCombo>());
    HostAccess::replyOf(pair) = HostAccess::requestOf(pair);
    return HostAccess::modulePlugin(handler, QString()) == nullptr ? HostAccess::currentRegisters(tools)
                                                                   : HostAccess::fractions(set);
}

// Constants.
CALLABLE(QObject, object.setProperty(DynamicProperty::ShowOnToolbar, true),
         "host/DynamicProperty.h: DynamicProperty::ShowOnToolbar has to be a C string");
CALLABLE(QObject, object.setProperty(DynamicProperty::WindowFlags, true),
         "host/DynamicProperty.h: DynamicProperty::WindowFlags has to be a C string");
CALLABLE(QObject, object.setProperty(DynamicProperty::WindowModal, true),
         "host/DynamicProperty.h: DynamicProperty::WindowModal has to be a C string");
CALLABLE(QObject, object.setProperty(DynamicProperty::WindowAddSizeGrip, true),
         "host/DynamicProperty.h: DynamicProperty::WindowAddSizeGrip has to be a C string");
CALLABLE(QObject, object.setProperty(DynamicProperty::CaptureX, true),
         "host/DynamicProperty.h: DynamicProperty::CaptureX has to be a C string");
CALLABLE(QObject, object.setProperty(DynamicProperty::CaptureY, true),
         "host/DynamicProperty.h: DynamicProperty::CaptureY has to be a C string");
GIVES(QString, const int, (static_cast<void>(object), HostAccess::text(ParameterType::DigitalInput)),
      "host/ParameterType.h: ParameterType::DigitalInput has to be a text");
GIVES(QString, const int, (static_cast<void>(object), HostAccess::text(ParameterType::AnalogInput)),
      "host/ParameterType.h: ParameterType::AnalogInput has to be a text");
GIVES(QString, const int, (static_cast<void>(object), HostAccess::text(ParameterType::DigitalOutput)),
      "host/ParameterType.h: ParameterType::DigitalOutput has to be a text");
GIVES(QString, const int, (static_cast<void>(object), HostAccess::lineEnd()),
      "host/LineEnd.h: hostLineEnd has to be a text");
GIVES(QColor, int, colorForIds[object], "host/CurveColors.h: colorForIds has to be a list of QColor");

} // namespace
