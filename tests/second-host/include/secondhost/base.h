#pragma once

#include <QLoggingCategory>

#ifdef SECONDHOST_BUILD
#define SECONDHOST_EXPORT Q_DECL_EXPORT
#else
#define SECONDHOST_EXPORT Q_DECL_IMPORT
#endif

SECONDHOST_EXPORT const QLoggingCategory &debLowLevel();

namespace secondhost
{
const char *const lineBreak = "\r\n";
}

namespace DynamicProperty
{
const char *const ShowOnToolbar = "dpShowOnToolbar";
const char *const WindowFlags = "dpWindowFlags";
const char *const WindowModal = "dpWindowModal";
const char *const WindowAddSizeGrip = "dpSizeGrip";
const char *const CaptureX = "dpNameX";
const char *const CaptureY = "dpNameY";
} // namespace DynamicProperty

namespace ParameterType
{
const QString DigitalInput = QStringLiteral("io0");
const QString AnalogInput = QStringLiteral("io1");
const QString DigitalOutput = QStringLiteral("io2");
} // namespace ParameterType
