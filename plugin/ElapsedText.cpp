#include "ElapsedText.h"

namespace
{

constexpr qint64 microsecondLimitNs = 10'000'000;

} // namespace

QString elapsedText(qint64 elapsedNs)
{
    const auto elapsed = static_cast<double>(elapsedNs);
    if (elapsedNs <= microsecondLimitNs) {
        return QStringLiteral("%1 µs").arg(qRound64(elapsed / 100000.0) * 100, 5);
    }
    return QStringLiteral("%1 ms").arg(qRound64(elapsed / 1000000.0), 4);
}
