#pragma once

#include "host/CommandCombo.h"
#include "host/ContainerInterface.h"
#include "host/KAROModuleInterface.h"
#include "host/LineEnd.h"
#include "host/PluginHandler.h"
#include "host/RegisterSet.h"
#include "host/TempTools.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>

#include <type_traits>

#ifndef ContainerInterface_iid
#error Write into host/ContainerInterface.h: #define ContainerInterface_iid TEXT, the TEXT of Q_DECLARE_INTERFACE there
#endif

/**
 * Access to what differs between hosts in name or type. The plugin's view of the host, not used by the workbench.
 *
 * Each function template tries the usual spellings. For a host with another spelling, one of its forwarding headers
 * defines an ordinary function of the same name in this namespace, which overload resolution prefers. The failed
 * static_assert says what to write and where. GUI thread.
 */
namespace HostAccess
{

/// False, evaluated only when a template that uses it is instantiated.
template<typename> constexpr bool isKnown = false;

// The texts of a host may be of any of these types.
inline QString text(const QString &value)
{
    return value;
}

inline QString text(const char *value)
{
    return QString::fromLatin1(value);
}

inline QString text(QLatin1String value)
{
    return value;
}

inline QString text(const QByteArray &value)
{
    return QString::fromLatin1(value);
}

/// The host's line end in files and messages; its LineEnd.h defines hostLineEnd.
inline QString lineEnd()
{
    return text(hostLineEnd);
}

/// A pair of a request and a reply that have not been used.
template<typename Pair> Pair emptyPair()
{
    if constexpr (std::is_default_constructible_v<Pair>) {
        return Pair();
    } else {
        return Pair(Command(), Command());
    }
}

/// The request of \a pair: by position, for hosts are free in what they call its two members. Where a host hides them,
/// its CommandCombo.h has a function of this name, and one named replyOf, that take and return references.
template<typename Pair> Command &requestOf(Pair &pair)
{
    auto &[first, second] = pair;
    Q_UNUSED(second)
    return first;
}

/// The reply of \a pair, as requestOf().
template<typename Pair> Command &replyOf(Pair &pair)
{
    auto &[first, second] = pair;
    Q_UNUSED(first)
    return second;
}

/// The registers in any container of pointers to them, or in one that a pointer leads to; null gives none.
template<typename List> QList<Register *> registersIn(const List &list)
{
    if constexpr (std::is_pointer_v<List>) {
        return list == nullptr ? QList<Register *>() : registersIn(*list);
    } else {
        QList<Register *> registers;
        for (const Register *const entry : list) {
            // Registers are only read; but asking for their class is no const operation.
            registers.append(const_cast<Register *>(entry));
        }
        return registers;
    }
}

/// The registers that the last fillCurrentRegisterList() of \a tools has found.
template<typename Tools> QList<Register *> currentRegisters(Tools &tools)
{
    const auto asLookup = [](auto &object) -> decltype(registersIn(object.currentRegisterList())) {
        return registersIn(object.currentRegisterList());
    };
    const auto asGetter = [](auto &object) -> decltype(registersIn(object.getCurrentRegisterList())) {
        return registersIn(object.getCurrentRegisterList());
    };
    const auto asMember = [](auto &object) -> decltype(registersIn(object.currentRegisterList)) {
        return registersIn(object.currentRegisterList);
    };
    if constexpr (std::is_invocable_v<decltype(asLookup), Tools &>) {
        return asLookup(tools);
    } else if constexpr (std::is_invocable_v<decltype(asGetter), Tools &>) {
        return asGetter(tools);
    } else if constexpr (std::is_invocable_v<decltype(asMember), Tools &>) {
        return asMember(tools);
    } else {
        static_assert(isKnown<Tools>,
                      "Write into the forwarding header host/TempTools.h, with this host's name of the "
                      "list that fillCurrentRegisterList() fills: namespace HostAccess { inline "
                      "QList<Register *> currentRegisters(TempTools &tools) { return tools.NAME(); } }");
    }
}

// Without the macro, the plugin would silently take every set for a register without fields.
static_assert(QtPrivate::HasQ_OBJECT_Macro<RegisterSet>::Value, "host/RegisterSet.h: RegisterSet lacks Q_OBJECT");

/// The bit fields of \a set, in the host's order.
template<typename Set> QList<Register *> fractions(Set &set)
{
    const auto asGetter = [](auto &object) -> decltype(registersIn(object.getFractions())) {
        return registersIn(object.getFractions());
    };
    if constexpr (std::is_invocable_v<decltype(asGetter), Set &>) {
        return asGetter(set);
    } else {
        static_assert(isKnown<Set>, "Write into the forwarding header host/RegisterSet.h: namespace HostAccess { "
                                    "inline QList<Register *> fractions(RegisterSet &set) { return THE FIELDS; } }");
    }
}

/// The module under \a key, or null when there is none, or something else is registered under that key.
template<typename Handler> KAROModuleInterface *modulePlugin(Handler &handler, const QString &key)
{
    const auto asModule = [](auto &object, const QString &name) -> KAROModuleInterface * {
        return object.getModulePlugin(name);
    };
    using Found = decltype(handler.getModulePlugin(key));
    if constexpr (std::is_convertible_v<Found, KAROModuleInterface *>) {
        return asModule(handler, key);
    } else if constexpr (std::is_convertible_v<Found, QObject *>) {
        return qobject_cast<KAROModuleInterface *>(static_cast<QObject *>(handler.getModulePlugin(key)));
    } else {
        static_assert(isKnown<Handler>,
                      "Write into the forwarding header host/PluginHandler.h: namespace HostAccess { inline "
                      "KAROModuleInterface *modulePlugin(PluginHandler &handler, const QString &key) { return THE "
                      "MODULE OR nullptr; } }");
    }
}

} // namespace HostAccess
