#include "application/Terminal.h"

#include <QLoggingCategory>

#include <cstdlib>

namespace
{

/// Whether plain debug lines go to the terminal, too.
bool printsDebugLines = false;

void handleMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    // Qt's own about screenless windows and bare environments.
    if (text.endsWith(QLatin1String("does not support propagateSizeHints()")) ||
        text.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set"))) {
        return;
    }
    if (type == QtDebugMsg && !printsDebugLines && qstrcmp(context.category, "default") == 0) {
        return;
    }
    std::fputs(qPrintable(qFormatLogMessage(type, context, text) + QLatin1Char('\n')), stderr);
    if (type == QtFatalMsg) {
        std::abort();
    }
}

} // namespace

Terminal::Terminal(std::FILE *output, std::FILE *errors) : m_output(output), m_errors(errors) {}

void Terminal::print(const QString &line) const
{
    std::fputs(qPrintable(line + QLatin1Char('\n')), m_output);
    std::fflush(m_output);
}

void Terminal::printError(const QString &line) const
{
    std::fputs(qPrintable(QStringLiteral("xy-plot-workbench: ") + line + QLatin1Char('\n')), m_errors);
}

void printLoggedMessages()
{
    qInstallMessageHandler(handleMessage);
    // Only the variable can switch on what these rules switch off.
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    printsDebugLines = QLoggingCategory::defaultCategory()->isDebugEnabled();
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=true"));
}
