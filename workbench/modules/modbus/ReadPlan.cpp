#include "modules/modbus/ReadPlan.h"

#include "modules/modbus/ConnectionSettings.h"

#include <algorithm>
#include <limits>

namespace
{

constexpr int bitsPerPayloadByte = 8;
constexpr int bytesPerRegister = 2;
constexpr double frameBytes = 8 + 5 + 2 * 3.5; // request, answer without its payload, two silences
constexpr double typicalDelaySeconds = 0.003;
constexpr double networkBytesPerSecond = 100e6 / 8;

int payloadBytes(ModbusTable table, int count)
{
    return isBitTable(table) ? (count + bitsPerPayloadByte - 1) / bitsPerPayloadByte : count * bytesPerRegister;
}

RegisterSpan spanBetween(ModbusTable table, int begin, int end)
{
    return {table, static_cast<quint16>(begin), static_cast<quint16>(end - begin)};
}

bool holds(const RegisterSpan &request, const RegisterSpan &span)
{
    return request.table == span.table && request.address <= span.address && span.end() <= request.end();
}

/// The cheapest division of \a sorted, spans of one table by address, into requests.
QVector<RegisterSpan> cheapestRequests(const QVector<RegisterSpan> &sorted, LineCost cost,
                                       const QVector<RegisterSpan> &refused)
{
    // lowest[n]: cost of the first n spans; begin[n]: where the last request of that division begins.
    QVector<double> lowest(sorted.size() + 1, std::numeric_limits<double>::max());
    QVector<int> begin(sorted.size() + 1, 0);
    QVector<RegisterSpan> last(sorted.size() + 1);
    lowest[0] = 0;
    for (int first = 0; first < sorted.size(); ++first) {
        RegisterSpan joined = sorted.at(first);
        for (int next = first; next < sorted.size(); ++next) {
            const int end = std::max(joined.end(), sorted.at(next).end());
            if (end - joined.address > maximumCount(joined.table)) {
                break;
            }
            joined = spanBetween(joined.table, joined.address, end);
            const bool isRefused =
                std::any_of(refused.cbegin(), refused.cend(),
                            [&joined](const RegisterSpan &request) { return holds(joined, request); });
            if (next > first && isRefused) {
                break;
            }
            const double total = lowest.at(first) + cost.requestBytes + payloadBytes(joined.table, joined.count);
            if (total < lowest.at(next + 1)) {
                lowest[next + 1] = total;
                begin[next + 1] = first;
                last[next + 1] = joined;
            }
        }
    }
    QVector<RegisterSpan> requests;
    for (int count = sorted.size(); count > 0; count = begin.at(count)) {
        requests.append(last.at(count));
    }
    return requests;
}

} // namespace

LineCost LineCost::of(const ConnectionSettings &settings)
{
    if (settings.medium == ConnectionSettings::Medium::Tcp) {
        return {typicalDelaySeconds * networkBytesPerSecond};
    }
    return {frameBytes + typicalDelaySeconds * settings.baud / settings.bitsPerByte()};
}

ReadPlan::ReadPlan(const QVector<RegisterSpan> &spans, LineCost cost, const QVector<RegisterSpan> &refused)
{
    QVector<RegisterSpan> requests;
    for (const ModbusTable table :
         {ModbusTable::Coil, ModbusTable::DiscreteInput, ModbusTable::InputRegister, ModbusTable::HoldingRegister}) {
        QVector<RegisterSpan> ofTable;
        for (const RegisterSpan &span : spans) {
            if (span.table == table && !ofTable.contains(span)) {
                ofTable.append(span);
            }
        }
        std::sort(ofTable.begin(), ofTable.end(), [](const RegisterSpan &left, const RegisterSpan &right) {
            return left.address != right.address ? left.address < right.address : left.count < right.count;
        });
        requests += cheapestRequests(ofTable, cost, refused);
    }
    for (const RegisterSpan &span : spans) {
        const auto isHolding = [&span](const RegisterSpan &request) { return holds(request, span); };
        auto found = std::find_if(m_requests.cbegin(), m_requests.cend(), isHolding);
        if (found == m_requests.cend()) {
            m_requests.append(*std::find_if(requests.cbegin(), requests.cend(), isHolding));
            found = m_requests.cend() - 1;
        }
        m_requestOf.append(static_cast<int>(found - m_requests.cbegin()));
        m_offsetOf.append(span.address - found->address);
    }
}

const QVector<RegisterSpan> &ReadPlan::requests() const
{
    return m_requests;
}

int ReadPlan::requestOf(int span) const
{
    return m_requestOf.at(span);
}

int ReadPlan::offsetOf(int span) const
{
    return m_offsetOf.at(span);
}
