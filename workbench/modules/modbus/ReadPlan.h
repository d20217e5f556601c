#pragma once

#include "modules/modbus/RegisterSpan.h"

#include <QVector>

struct ConnectionSettings;

/// What a request costs on a line, as the bytes that the line could have carried in the same time.
struct LineCost
{
    double requestBytes = 0; ///< of a request without its payload: both headers, silences, the device's delay

    /**
     * The cost on the line of \a settings.
     *
     * RTU: 8 bytes of request, 5 of the answer around its payload, two silences of 3.5 bytes, and a device that takes
     * 3 ms to answer. TCP: the same 3 ms at 100 Mbit/s, beside which any payload is free.
     */
    static LineCost of(const ConnectionSettings &settings);
};

/**
 * Which requests read a group of spans at the lowest cost, and where each span's words are among the answers.
 *
 * Spans of one table are joined into one request where it fits (125 registers or 2000 bits), with the gap between them
 * if reading it costs less than another request. A span is never split. A plain value; pure.
 */
class ReadPlan
{
public:
    ReadPlan() = default;

    /**
     * The order of the requests follows the spans.
     *
     * \param spans each of them readable
     * \param refused requests that the device has refused, because nothing is in a gap or because it lets its objects be
     *        read one at a time only: spans are not joined to requests that hold one of them
     */
    ReadPlan(const QVector<RegisterSpan> &spans, LineCost cost, const QVector<RegisterSpan> &refused = {});

    const QVector<RegisterSpan> &requests() const;

    /// Which request reads the span with the index \a span.
    int requestOf(int span) const;

    /// Index of the first word of that span in the answer to its request.
    int offsetOf(int span) const;

private:
    QVector<RegisterSpan> m_requests;
    QVector<int> m_requestOf;
    QVector<int> m_offsetOf;
};
