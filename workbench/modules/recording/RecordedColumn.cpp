#include "modules/recording/RecordedColumn.h"

QString RecordedColumn::suffix() const
{
    constexpr int plainPowers = 9; // up to nine decimals are written as they are
    QString text = unit;
    if (power != 0) {
        const QString scale = power > 0 && power <= plainPowers
                                  ? QStringLiteral("0.") + QStringLiteral("1").rightJustified(power, QLatin1Char('0'))
                                  : QStringLiteral("1e%1").arg(-power);
        text = unit.isEmpty() ? scale : scale + QLatin1Char(' ') + unit;
    }
    return text.isEmpty() ? text : QLatin1Char('[') + text + QLatin1Char(']');
}
