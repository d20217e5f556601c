// One small SDK in which everything that hosts may decide on their own is a macro; see .ci/host-choices, which sets
// them and compiles the plugin against it. Nothing here has a body. The defaults are the most literal reading: const
// only where it is certain, int for numbers.
#pragma once

#include <QColor>
#include <QComboBox>
#include <QHash>
#include <QLoggingCategory>
#include <QMap>
#include <QSettings>
#include <QStandardItemModel>
#include <QVariant>
#include <QVector>
#include <QWidget>

#include <array>
#include <vector>

class ComboBox;
class CommandHandlerInterface;
class ContainerInterface;
class KAROModuleInterface;
class PluginHandler;
class QAbstractButton;
class Register;
struct Parameter;
struct export_type_t;

#ifndef NUMBER
#define NUMBER int
#endif
#ifndef ADDRESS
#define ADDRESS int
#endif
#ifndef LOOKUP_VIRTUAL
#define LOOKUP_VIRTUAL
#endif
#ifndef LOOKUP_CONST
#define LOOKUP_CONST
#endif
#ifndef LOOKUP_END
#define LOOKUP_END
#endif
#ifndef VERSION_CONST
#define VERSION_CONST
#endif
#ifndef VALUE_CONST
#define VALUE_CONST
#endif
#ifndef CLONE_RESULT
#define CLONE_RESULT PluginInterface
#endif
#ifndef HANDLER_ACCESS
#define HANDLER_ACCESS public
#endif
#ifndef NOTICE_NAME
#define NOTICE_NAME QString
#endif
#ifndef FINISHED
#define FINISHED public
#endif
#ifndef MAP_RESULT
#define MAP_RESULT QMap<QString, Parameter> *
#endif
#ifndef MODULE_RESULT
#define MODULE_RESULT KAROModuleInterface *
#endif
#ifndef HANDLER_BASE
#define HANDLER_BASE
#endif
#ifndef COMMAND_END
#define COMMAND_END ~Command();
#endif
#ifndef SETTER_RESULT
#define SETTER_RESULT void
#endif
#ifndef PAIR
#define PAIR                                                                                                           \
    struct CommandCombo                                                                                                \
    {                                                                                                                  \
        Command request;                                                                                               \
        Command reply;                                                                                                 \
    };
#endif
#ifndef CHANNEL_BASE
#define CHANNEL_BASE
#endif
#ifndef CHANNEL_RESULT
#define CHANNEL_RESULT void
#endif
#ifndef COMBOS
#define COMBOS QList<CommandCombo *>
#endif
#ifndef FRACTIONS
#define FRACTIONS QList<Register *>
#endif
#ifndef SET_MACRO
#define SET_MACRO Q_OBJECT
#endif
#ifndef REGISTER_LIST
#define REGISTER_LIST QList<Register *> currentRegisterList();
#endif
#ifndef ACCESS
#define ACCESS
#endif
#ifndef BOX_MACRO
#define BOX_MACRO Q_OBJECT
#endif
#ifndef BOX_RESULT
#define BOX_RESULT void
#endif
#ifndef TOOLS
#define TOOLS namespace BasicTools
#define TOOL
#endif
#ifndef TINT_RESULT
#define TINT_RESULT void
#endif
#ifndef LOGGING
#define LOGGING QLoggingCategory &debLowLevel();
#endif
#ifndef PROPERTY
#define PROPERTY const char *const
#endif
#ifndef TEXT
#define TEXT const char *const
#endif
#ifndef COLORS
#define COLORS extern QColor colorForIds[6];
#endif
#ifndef LINE_END
#define LINE_END const char *const hostLineEnd = "\r\n";
#endif

class PluginInterface : public QWidget
{
    Q_OBJECT
public:
    explicit PluginInterface(QWidget *parent);
    virtual QString version() VERSION_CONST;
    virtual void aboutToExit();
    virtual void setEnabled(bool);
    virtual void importValue(export_type_t const *, QVariant, QObject *) {}
    virtual void siblingIsVisible(QString const &, bool) {}
    virtual void showPlugin();
    virtual void hidePlugin();
    virtual CLONE_RESULT *clone(QString, PluginHandler *);
    virtual void init(QWidget *);
    QString name() LOOKUP_CONST;
    QString key() const;
};

class ContainerInterface : public PluginInterface
{
    Q_OBJECT
public:
    ContainerInterface(QString const &, QString const &, int, PluginHandler *, QString, QWidget *);
    virtual void handleMessageFromToolsPlugin(int, QString);
    virtual void handleModulePlugin(KAROModuleInterface *, NOTICE_NAME);
    FINISHED : virtual void finished(int);
    HANDLER_ACCESS : PluginHandler *pluginHandler() LOOKUP_CONST;
};
#ifndef NO_IDENTIFIER
#define ContainerInterface_iid "example.choices.ContainerInterface/2.0"
Q_DECLARE_INTERFACE(ContainerInterface, ContainerInterface_iid)
#endif

class KAROModuleInterface : public PluginInterface
{
    Q_OBJECT
public:
    LOOKUP_VIRTUAL QString getAliasName() const LOOKUP_END;
    LOOKUP_VIRTUAL NUMBER numberOfAxes() LOOKUP_CONST LOOKUP_END;
    LOOKUP_VIRTUAL ADDRESS moduleAddress() LOOKUP_CONST LOOKUP_END;
    LOOKUP_VIRTUAL CommandHandlerInterface *commandHandlerInterface() LOOKUP_CONST LOOKUP_END;
    LOOKUP_VIRTUAL NUMBER getChannel() LOOKUP_CONST LOOKUP_END;
    LOOKUP_VIRTUAL MAP_RESULT getParameterMapByName(QString) LOOKUP_CONST LOOKUP_END;
};

class PluginHandler HANDLER_BASE
{
public:
    LOOKUP_VIRTUAL QStringList getModulePluginKeys(bool) LOOKUP_CONST LOOKUP_END;
    LOOKUP_VIRTUAL MODULE_RESULT getModulePlugin(QString const &) LOOKUP_CONST LOOKUP_END;
};

class Command
{
public:
    Command();
    Command(const Command &);
    Command &operator=(const Command &);
    COMMAND_END
    SETTER_RESULT setAddress(unsigned char);
    SETTER_RESULT setCommand(unsigned char);
    SETTER_RESULT setType(unsigned short);
    SETTER_RESULT setMotorBank(unsigned char);
    int value() VALUE_CONST;
};

PAIR

    class CommandHandlerInterface CHANNEL_BASE
{
public:
    virtual CHANNEL_RESULT sendCommandCombos(COMBOS);
    CHANNEL_RESULT setCircularMode(bool);
};

struct Parameter
{
    double factor;
    qint32 first;
    NUMBER number;
    bool stored;
    qint32 second;
    QString group;
    qint64 limits[2];
    unsigned char bytes[3];
    QString texts, name, nameSuffix, unit, access, help;
};

class Register : public QObject
{
    Q_OBJECT
public:
    LOOKUP_VIRTUAL NUMBER getOffset() const LOOKUP_END;
    LOOKUP_VIRTUAL NUMBER getWidth() const LOOKUP_END;
    LOOKUP_VIRTUAL QString getTitle() const LOOKUP_END;
    LOOKUP_VIRTUAL QString getDescription() const LOOKUP_END;
};

class RegisterSet : public Register
{
    SET_MACRO
public:
    LOOKUP_VIRTUAL FRACTIONS getFractions() LOOKUP_CONST LOOKUP_END;
};

class TempTools
{
public:
    TempTools(int, int, CommandHandlerInterface *, QString, unsigned char, unsigned char);
    bool fillCurrentRegisterList(KAROModuleInterface *, QList<int>);
    REGISTER_LIST
};

class ComboBox : public QComboBox
{
    BOX_MACRO
public:
    explicit ComboBox(QWidget *);
    BOX_RESULT clear();
    BOX_RESULT resetLastIndex();
    BOX_RESULT setCurrentIndex(int);
};

class AppSettings : public QSettings
{
public:
    AppSettings();
};

class ExportCSV : public QWidget
{
    Q_OBJECT
public:
    ExportCSV(QStandardItemModel *, QWidget *, Qt::WindowFlags);
};

TOOLS
{
    TOOL void adjustLinearAxis(double &, double &, unsigned int &);
    TOOL QString intInsertDot(double, int);
    TOOL TINT_RESULT setButtonIconsColor(QAbstractButton *, QColor, QColor, QColor);
    TOOL QString iToHex(unsigned char, int, QString);
    TOOL QString ExportPNG(QWidget *, QString);
};

namespace DynamicProperty
{
using Name = PROPERTY;
extern Name ShowOnToolbar, WindowFlags, WindowModal, WindowAddSizeGrip, CaptureX, CaptureY;
} // namespace DynamicProperty

namespace ParameterType
{
using Text = TEXT;
extern Text DigitalInput, AnalogInput, DigitalOutput;
} // namespace ParameterType

LOGGING
COLORS
LINE_END

// What is none of the plugin's business, in the headers of a host.
#if OLD_WAYS
inline short sorted(QList<int> list, int count)
{
    foreach (int each, list)
        qSort(list.begin(), list.begin() + each);
    return count;
}
#endif
#ifdef GLOBAL_NAMES
const int ICONSize = 24;
void text(int);
void fractions();
#endif
#ifdef PLATFORM_MACROS
#define near
#define far
#define interface struct
#define small char
#endif

namespace HostAccess
{
ACCESS
}
