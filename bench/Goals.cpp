#include "Goals.h"

void Goals::add(const QString &goal, const QStringList &failures)
{
    constexpr int shownFailures = 5;
    QString line = (failures.isEmpty() ? QStringLiteral("- reached: ") : QStringLiteral("- missed: ")) + goal;
    if (!failures.isEmpty()) {
        line += QStringLiteral(" (%1: %2").arg(failures.size()).arg(failures.mid(0, shownFailures).join("; "));
        line += failures.size() > shownFailures ? QStringLiteral("; ...)") : QStringLiteral(")");
    }
    m_lines.append(line);
}

QString Goals::text() const
{
    return m_lines.isEmpty() ? QString() : QLatin1Char('\n') + m_lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}
