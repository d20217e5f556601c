#include "LogText.h"

#include "host/HostAccess.h"

namespace
{

const QChar separator = QLatin1Char(';');

} // namespace

QString LogText::header(const QVector<CurveCaptions> &curves)
{
    QString modules = QStringLiteral("Module:;");
    QString names = QStringLiteral("Counter;");
    for (const CurveCaptions &curve : curves) {
        modules += curve.xModule + separator + curve.yModule + separator;
        names += curve.xName + separator + curve.yName + separator;
    }
    const QString lineEnd = HostAccess::lineEnd();
    return modules + lineEnd + names + lineEnd;
}

QString LogText::pointFields(const QPointF &point)
{
    return QString::number(static_cast<int>(point.x())) + separator + QString::number(static_cast<int>(point.y())) +
           separator;
}

QString LogText::repeatedPointFields()
{
    return QString(2, separator);
}

QString LogText::dataLine(int number, const QString &fields)
{
    return QString::number(number) + separator + fields + HostAccess::lineEnd();
}
