#pragma once

#include <QProcess>
#include <QtTest>

/// Without these programs a test is skipped, unless the environment has REQUIRE_MODBUS_SERVERS=1.
#define SKIP_WITHOUT(program, name)                                                                                    \
    do {                                                                                                               \
        if (!(program)) {                                                                                              \
            QVERIFY2(!qEnvironmentVariableIsSet("REQUIRE_MODBUS_SERVERS"), name " is missing");                        \
            QSKIP(name " is missing: cmake/install-dependencies.sh test-servers");                                     \
        }                                                                                                              \
    } while (false)

/// The Python that has what the servers need; the distribution's own, where another comes first in the path.
inline QString pythonWithServer()
{
    for (const char *const candidate : {"python3", "/usr/bin/python3"}) {
        if (QProcess::execute(candidate, {"-c", "try:\n import pymodbus.server, serial_asyncio\n"
                                                "except ImportError:\n exit(1)"}) == 0) {
            return candidate;
        }
    }
    return {};
}
