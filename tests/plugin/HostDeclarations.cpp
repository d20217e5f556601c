// Every declaration of the host that the plugin and the plot widget need, checked by the compiler: a host whose headers
// pass here builds both. Nothing of this is run.

#include "host/AppSettings.h"
#include "host/BasicTools.h"
#include "host/ComboBox.h"
#include "host/CommandHandlerInterface.h"
#include "host/ContainerInterface.h"
#include "host/CurveColors.h"
#include "host/DynamicProperty.h"
#include "host/ExportCSV.h"
#include "host/HostLogging.h"
#include "host/KAROModuleInterface.h"
#include "host/LineEnd.h"
#include "host/ParameterType.h"
#include "host/PluginHandler.h"
#include "host/RegisterSet.h"
#include "host/TempTools.h"

#include <type_traits>
#include <utility>

namespace
{

template<typename Type> Type &some();

// A class without it is found and cast as if it were its base.
template<typename Class> constexpr bool hasMetaObject = QtPrivate::HasQ_OBJECT_Macro<Class>::Value != 0;

template<typename Result, typename Expression> constexpr bool gives = std::is_convertible_v<Expression, Result>;

#define GIVES(Result, expression) static_assert(gives<Result, decltype(expression)>, #expression)

// The plugin's bases, what it overrides there, and the name under which the host asks for it.
static_assert(std::is_base_of_v<QWidget, PluginInterface> && std::is_base_of_v<PluginInterface, ContainerInterface>);
static_assert(std::is_base_of_v<PluginInterface, KAROModuleInterface>);
static_assert(std::has_virtual_destructor_v<ContainerInterface>);
class Container : public ContainerInterface
{
public:
    using ContainerInterface::ContainerInterface;
    QString version() override;
    Container *clone(QString name, PluginHandler *handler) override;
    void init(QWidget *parent) override;
    void handleModulePlugin(KAROModuleInterface *module, QString name) override;
    void finished(int code) override;
};
static_assert(std::is_constructible_v<Container, QString, QString, int, PluginHandler *, QString, QWidget *>);
GIVES(const char *, qobject_interface_iid<ContainerInterface *>());
GIVES(const char *, ContainerInterface_iid);
GIVES(QString, some<PluginInterface>().name());
GIVES(QString, some<const PluginInterface>().key());
GIVES(PluginHandler *, some<ContainerInterface>().pluginHandler());
GIVES(QStringList, some<PluginHandler>().getModulePluginKeys(false));
GIVES(KAROModuleInterface *, some<PluginHandler>().getModulePlugin(QString()));

GIVES(QString, some<const KAROModuleInterface>().getAliasName());
GIVES(int, some<KAROModuleInterface>().numberOfAxes());
GIVES(unsigned char, some<KAROModuleInterface>().moduleAddress());
GIVES(CommandHandlerInterface *, some<KAROModuleInterface>().commandHandlerInterface());
GIVES(int, some<KAROModuleInterface>().getChannel());
static_assert(
    gives<const QMap<QString, Parameter> *, decltype(some<KAROModuleInterface>().getParameterMapByName(QString()))>);
GIVES(int, some<const Parameter>().number);
GIVES(QString, some<const Parameter>().name + some<const Parameter>().nameSuffix + some<const Parameter>().access);

// The channel takes a source's own request and reply in place.
static_assert(std::is_copy_constructible_v<Command> && std::is_copy_assignable_v<Command>);
static_assert(std::is_standard_layout_v<Command> && sizeof(CommandCombo) == 2 * sizeof(Command));
GIVES(qint32, some<const Command>().value());
static_assert(std::is_same_v<decltype(&Command::setAddress), void (Command::*)(unsigned char)>);
static_assert(std::is_same_v<decltype(&Command::setCommand), void (Command::*)(unsigned char)>);
static_assert(std::is_same_v<decltype(&Command::setType), void (Command::*)(unsigned short)>);
static_assert(std::is_same_v<decltype(&Command::setMotorBank), void (Command::*)(unsigned char)>);
static_assert(std::is_same_v<decltype(&CommandHandlerInterface::sendCommandCombos),
                             void (CommandHandlerInterface::*)(QList<CommandCombo *>)>);
static_assert(
    std::is_same_v<decltype(&CommandHandlerInterface::setCircularMode), void (CommandHandlerInterface::*)(bool)>);

static_assert(std::is_base_of_v<QObject, Register> && std::is_base_of_v<Register, RegisterSet>);
GIVES(int, some<const Register>().getOffset() + some<const Register>().getWidth());
GIVES(QString, some<const Register>().getTitle() + some<const Register>().getDescription());
GIVES(QList<Register *>, some<RegisterSet>().getFractions());
static_assert(
    std::is_constructible_v<TempTools, int, int, CommandHandlerInterface *, QString, unsigned char, unsigned char>);
GIVES(bool, some<TempTools>().fillCurrentRegisterList(nullptr, QList<int>()));
GIVES(QList<Register *>, some<const TempTools>().currentRegisterList());

static_assert(hasMetaObject<ContainerInterface> && hasMetaObject<KAROModuleInterface> && hasMetaObject<RegisterSet>);
static_assert(hasMetaObject<ComboBox> && hasMetaObject<ExportCSV>);
static_assert(QMetaTypeId2<KAROModuleInterface *>::Defined);

static_assert(std::is_base_of_v<QSettings, AppSettings> && std::is_default_constructible_v<AppSettings>);
static_assert(std::is_base_of_v<QComboBox, ComboBox> && std::is_constructible_v<ComboBox, QWidget *>);
static_assert(std::is_same_v<decltype(&ComboBox::clear), void (ComboBox::*)()>);
static_assert(std::is_same_v<decltype(&ComboBox::resetLastIndex), void (ComboBox::*)()>);
static_assert(std::is_same_v<decltype(&ComboBox::setCurrentIndex), void (ComboBox::*)(int)>);
static_assert(std::is_base_of_v<QWidget, ExportCSV>);
static_assert(std::is_constructible_v<ExportCSV, QStandardItemModel *, QWidget *, Qt::WindowFlags>);

static_assert(std::is_same_v<decltype(&BasicTools::adjustLinearAxis), void (*)(double &, double &, unsigned int &)>);
GIVES(QString, BasicTools::intInsertDot(0.0, 0));
GIVES(QString, BasicTools::iToHex(0, 2, QString()));
GIVES(QString, BasicTools::ExportPNG(nullptr, QString()));
static_assert(std::is_same_v<void, decltype(BasicTools::setButtonIconsColor(nullptr, QColor(), QColor(), QColor()))>);
GIVES(const QLoggingCategory &, debLowLevel());

GIVES(const char *, DynamicProperty::ShowOnToolbar);
GIVES(const char *, DynamicProperty::WindowFlags);
GIVES(const char *, DynamicProperty::WindowModal);
GIVES(const char *, DynamicProperty::WindowAddSizeGrip);
GIVES(const char *, DynamicProperty::CaptureX);
GIVES(const char *, DynamicProperty::CaptureY);
GIVES(QString, ParameterType::DigitalInput);
GIVES(QString, ParameterType::AnalogInput);
GIVES(QString, ParameterType::DigitalOutput);
GIVES(QColor, colorForIds[curveColorCount - 1]);
GIVES(QLatin1String, QLatin1String(hostLineEnd));

} // namespace
