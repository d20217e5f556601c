// What is shared as text: property names, names of parameter groups, the end
// of a line, and the category of debug output.
#pragma once

#include <QLoggingCategory>
#include <QString>

#if defined(SECONDHOST_IS_BUILT)
#define SECONDHOST_API Q_DECL_EXPORT
#else
#define SECONDHOST_API Q_DECL_IMPORT
#endif

SECONDHOST_API QLoggingCategory& debLowLevel();

namespace secondhost {
// Windows tools read the logs.
const char* const kEndOfLine = "\r\n";
}  // namespace secondhost

class SECONDHOST_API DynamicProperty {
 public:
  static const char* ShowOnToolbar;
  static const char* WindowFlags;
  static const char* WindowModal;
  static const char* WindowAddSizeGrip;
  static const char* CaptureX;
  static const char* CaptureY;
};

class SECONDHOST_API ParameterType {
 public:
  static QString DigitalInput;
  static QString AnalogInput;
  static QString DigitalOutput;
};
