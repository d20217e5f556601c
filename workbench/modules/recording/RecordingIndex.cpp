#include "modules/recording/RecordingIndex.h"

#include "modules/recording/RowDecoder.h"

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace
{

constexpr int chunkBytes = 1 << 20;

struct RecordingIndexText
{
    Q_DECLARE_TR_FUNCTIONS(RecordingIndex)
};

/// What the numbers of a column are like, for its scale.
struct ColumnRange
{
    double minimum = 0.0;
    double maximum = 0.0;
    int decimals = 0;
};

bool isWithinLimits(const ColumnRange &range, int power)
{
    const double factor = std::pow(10.0, power);
    return std::round(range.maximum * factor) <= std::numeric_limits<qint32>::max() &&
           std::round(range.minimum * factor) >= std::numeric_limits<qint32>::min();
}

/// The largest power up to the decimals of a column with which all its numbers are signed 32-bit ones.
int powerFor(const ColumnRange &range)
{
    const double largest = std::max(range.maximum, -range.minimum);
    if (!(largest > 0.0)) {
        return 0;
    }
    constexpr int digits = 10; // of the largest 32-bit number
    int power = std::min(range.decimals, digits - static_cast<int>(std::floor(std::log10(largest))));
    while (!isWithinLimits(range, power)) {
        --power;
    }
    return power;
}

class IndexBuilder
{
public:
    IndexBuilder(QFile *file, const RecordingFormat &format)
        : m_file(file)
        , m_format(format)
        , m_decoder(&format)
        , m_rowsPerBlock(std::max<int>(16, RecordingIndex::fieldsPerBlock / std::max(1, format.fieldCount)))
        , m_line(format.dataLine)
        , m_now(static_cast<std::size_t>(format.columns.size()), std::numeric_limits<double>::quiet_NaN())
        , m_ranges(m_now.size())
    {
        m_result.index.first = m_now;
    }

    RecordingIndexResult build()
    {
        m_result.index.endOffset = m_format.dataOffset;
        if (!m_file->seek(m_format.dataOffset)) {
            m_result.error = m_file->errorString();
        }
        readChunks();
        if (m_result.error.isEmpty() && m_result.index.rowCount == 0) {
            m_result.error = m_firstDamage.isEmpty()
                                 ? recordingProblem(m_format.dataLine, 0, RecordingIndexText::tr("lines with numbers"),
                                                    RecordingIndexText::tr("the end of the file"))
                                 : m_firstDamage;
        }
        finish();
        return m_result;
    }

private:
    void readChunks();
    bool takeLine(const char *begin, const char *end, qint64 offset, bool hasLineEnd);
    void takeRow(qint64 offset);
    void finish();

    QFile *const m_file; // not owned
    const RecordingFormat &m_format;
    RowDecoder m_decoder;
    const int m_rowsPerBlock;
    RecordingIndexResult m_result;
    int m_line; // number of the next one
    qint64 m_lastCounter = 0;
    std::vector<double> m_now; // the latest number of each column
    std::vector<ColumnRange> m_ranges;
    int m_damagedLines = 0;
    QString m_firstDamage;
};

void IndexBuilder::readChunks()
{
    QByteArray rest; // the beginning of a line whose end is in the next chunk
    qint64 offset = m_format.dataOffset;
    while (m_result.error.isEmpty()) {
        QByteArray chunk = m_file->read(chunkBytes);
        if (chunk.isEmpty()) {
            break;
        }
        chunk.prepend(rest);
        const char *at = chunk.constData();
        const char *const end = at + chunk.size();
        while (const void *const found = std::memchr(at, '\n', static_cast<std::size_t>(end - at))) {
            const char *const lineFeed = static_cast<const char *>(found);
            if (!takeLine(at, lineFeed, offset + (at - chunk.constData()), true)) {
                return;
            }
            at = lineFeed + 1;
        }
        offset += at - chunk.constData();
        rest = QByteArray(at, static_cast<int>(end - at));
        if (rest.size() > RecordingFormat::maximumLineBytes) {
            break;
        }
    }
    if (m_result.error.isEmpty() && !rest.isEmpty()) {
        takeLine(rest.constData(), rest.constData() + rest.size(), offset, false);
    }
}

/// \return false when the file cannot be played
bool IndexBuilder::takeLine(const char *begin, const char *end, qint64 offset, bool hasLineEnd)
{
    const int line = m_line++;
    if (end - begin > RecordingFormat::maximumLineBytes) {
        m_result.error =
            recordingProblem(line, 0, RecordingIndexText::tr("at most %1 bytes").arg(RecordingFormat::maximumLineBytes),
                             RecordingIndexText::tr("more"));
        return false;
    }
    if (std::memchr(begin, 0, static_cast<std::size_t>(end - begin)) != nullptr) {
        m_result.error =
            recordingProblem(line, 0, RecordingIndexText::tr("text"), RecordingIndexText::tr("a zero byte"));
        return false;
    }
    switch (m_decoder.decode(begin, end)) {
    case RowDecoder::Outcome::Blank:
        return true;
    case RowDecoder::Outcome::Row:
        takeRow(offset);
        m_result.index.endOffset = offset + (end - begin) + (hasLineEnd ? 1 : 0);
        return true;
    case RowDecoder::Outcome::Damaged:
        break;
    }
    if (!m_format.isLog) {
        m_result.error = m_decoder.problem(line);
        return false;
    }
    if (!hasLineEnd) {
        m_result.index.notes.append(
            RecordingIndexText::tr("Line %1, the last one, is cut off and left out.").arg(line));
        return true;
    }
    m_firstDamage = m_damagedLines++ == 0 ? m_decoder.problem(line) : m_firstDamage;
    return true;
}

void IndexBuilder::takeRow(qint64 offset)
{
    RecordingIndex &index = m_result.index;
    const qint64 counter = m_format.isLog ? m_decoder.counter() : index.rowCount;
    if (index.rowCount == 0) {
        m_lastCounter = counter - 1;
        index.lastStep = -1;
    }
    const qint64 counterBefore = m_lastCounter;
    index.lastStep += RecordingIndex::stepsBetween(counterBefore, counter);
    m_lastCounter = counter;
    if (index.rowCount % m_rowsPerBlock == 0) {
        index.blocks.push_back({offset, index.rowCount, index.lastStep, counterBefore});
        index.carried.insert(index.carried.end(), m_now.begin(), m_now.end());
    }
    ++index.rowCount;
    for (std::size_t column = 0; column < m_now.size(); ++column) {
        const FieldNumber &number = m_decoder.numbers()[column];
        if (number.kind != FieldNumber::Kind::Number) {
            continue;
        }
        if (std::isnan(m_now[column])) {
            index.first[column] = number.value;
        }
        m_now[column] = number.value;
        ColumnRange &range = m_ranges[column];
        range.minimum = std::min(range.minimum, number.value);
        range.maximum = std::max(range.maximum, number.value);
        range.decimals = std::max(range.decimals, number.decimals);
    }
}

void IndexBuilder::finish()
{
    RecordingIndex &index = m_result.index;
    for (std::size_t column = 0; column < m_now.size(); ++column) {
        index.powers.append(powerFor(m_ranges[column]));
        if (std::isnan(index.first[column])) {
            index.first[column] = 0.0;
        }
    }
    if (m_damagedLines > 0) {
        index.notes.prepend(RecordingIndexText::tr("Lines that are damaged and left out: %1. The first is %2.")
                                .arg(m_damagedLines)
                                .arg(m_firstDamage));
    }
    index.blocks.shrink_to_fit();
    index.carried.shrink_to_fit();
}

} // namespace

int RecordingIndex::stepsBetween(qint64 counterBefore, qint64 counter)
{
    const qint64 steps = counter - counterBefore;
    return steps >= 1 && steps <= maximumGap ? static_cast<int>(steps) : 1;
}

qint64 RecordingIndex::bytes() const
{
    const std::size_t numbers = carried.capacity() + first.capacity();
    return static_cast<qint64>(blocks.capacity() * sizeof(Block)) + static_cast<qint64>(numbers * sizeof(double));
}

RecordingIndexResult buildRecordingIndex(QFile *file, const RecordingFormat &format)
{
    return IndexBuilder(file, format).build();
}
