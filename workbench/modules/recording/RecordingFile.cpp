#include "modules/recording/RecordingFile.h"

#include "modules/recording/RowDecoder.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

constexpr int headBytes = 1 << 20;

struct RecordingFileText
{
    Q_DECLARE_TR_FUNCTIONS(RecordingFile)
};

qint32 scaled(double number, double factor, bool isDivided)
{
    using Limits = std::numeric_limits<qint32>;
    const double value = std::round(isDivided ? number / factor : number * factor);
    return value <= Limits::min() ? Limits::min() : value >= Limits::max() ? Limits::max() : static_cast<qint32>(value);
}

} // namespace

RecordingFile::Result RecordingFile::open(const QString &path)
{
    Result result;
    std::unique_ptr<RecordingFile> file(new RecordingFile);
    const QString problem = file->openFile(path);
    if (!problem.isEmpty()) {
        result.error = RecordingFileText::tr("%1: %2").arg(path, problem);
        return result;
    }
    result.file = std::move(file);
    return result;
}

QString RecordingFile::openFile(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists()) {
        return RecordingFileText::tr("there is no such file");
    }
    if (!info.isFile()) { // opening a FIFO would wait for its writer
        return info.isDir() ? RecordingFileText::tr("expected a file, found a folder")
                            : RecordingFileText::tr("expected a file, found a device or a pipe");
    }
    m_file.setFileName(info.absoluteFilePath());
    if (!m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return RecordingFileText::tr("cannot be read: %1").arg(m_file.errorString());
    }
    m_size = m_file.size();
    m_modified = info.lastModified();
    if (m_size > maximumBytes) {
        constexpr qint64 bytesPerMegabyte = 1 << 20;
        return RecordingFileText::tr("expected at most %1 MiB, found %2")
            .arg(maximumBytes / bytesPerMegabyte)
            .arg(m_size / bytesPerMegabyte);
    }
    const QByteArray head = m_file.read(headBytes);
    RecordingFormatResult format = readRecordingFormat(head, head.size() < headBytes);
    if (!format.error.isEmpty()) {
        return format.error;
    }
    RecordingIndexResult built = buildRecordingIndex(&m_file, format.format);
    if (!built.error.isEmpty()) {
        return built.error;
    }
    m_format = std::move(format.format);
    m_index = std::move(built.index);
    for (int column = 0; column < m_format.columns.size(); ++column) {
        m_format.columns[column].power = m_index.powers.at(column);
    }
    m_notes = m_format.notes + m_index.notes;
    return {};
}

QString RecordingFile::path() const
{
    return m_file.fileName();
}

const RecordingFormat &RecordingFile::format() const
{
    return m_format;
}

const QVector<RecordedColumn> &RecordingFile::columns() const
{
    return m_format.columns;
}

QStringList RecordingFile::notes() const
{
    return m_notes;
}

int RecordingFile::rowCount() const
{
    return m_index.rowCount;
}

qint64 RecordingFile::lastStep() const
{
    return m_index.lastStep;
}

int RecordingFile::rowAt(qint64 step)
{
    const auto behind =
        std::upper_bound(m_index.blocks.cbegin(), m_index.blocks.cend(), step,
                         [](qint64 wanted, const RecordingIndex::Block &block) { return wanted < block.firstStep; });
    const int block = std::max(0, static_cast<int>(behind - m_index.blocks.cbegin()) - 1);
    const int first = m_index.blocks[static_cast<std::size_t>(block)].firstRow;
    if (!load(block)) {
        return first;
    }
    const auto row = std::upper_bound(m_steps.cbegin(), m_steps.cend(), step);
    return first + std::max(0, static_cast<int>(row - m_steps.cbegin()) - 1);
}

qint64 RecordingFile::stepOf(int row)
{
    const int block = blockOf(row);
    const RecordingIndex::Block &place = m_index.blocks[static_cast<std::size_t>(block)];
    return load(block) ? m_steps[static_cast<std::size_t>(row - place.firstRow)] : place.firstStep;
}

qint32 RecordingFile::value(int row, int column)
{
    const int block = blockOf(row);
    if (load(block)) {
        m_lastRow = static_cast<std::size_t>(row - m_index.blocks[static_cast<std::size_t>(block)].firstRow);
    } else if (m_values.empty()) {
        return 0;
    }
    const auto columnCount = static_cast<std::size_t>(m_format.columns.size());
    return m_values[m_lastRow * columnCount + static_cast<std::size_t>(column)];
}

QString RecordingFile::trouble() const
{
    return m_trouble;
}

QString RecordingFile::change() const
{
    const QFileInfo info(path());
    const QString name = info.fileName();
    if (!info.exists()) {
        return RecordingFileText::tr("%1 was removed; what was opened can still be played").arg(name);
    }
    if (m_file.size() < m_size) {
        return RecordingFileText::tr("%1 was cut off; not all of it can be played").arg(name);
    }
    if (m_file.size() > m_size) {
        return RecordingFileText::tr("%1 has grown; take it out and plug it in again to play all of it").arg(name);
    }
    if (info.lastModified() != m_modified) {
        return RecordingFileText::tr("%1 was written to since it was opened").arg(name);
    }
    return {};
}

qint64 RecordingFile::indexBytes() const
{
    return m_index.bytes();
}

qint64 RecordingFile::decodedRows() const
{
    return m_decodedRows;
}

int RecordingFile::blockOf(int row) const
{
    const auto behind =
        std::upper_bound(m_index.blocks.cbegin(), m_index.blocks.cend(), row,
                         [](int wanted, const RecordingIndex::Block &block) { return wanted < block.firstRow; });
    return static_cast<int>(behind - m_index.blocks.cbegin()) - 1;
}

bool RecordingFile::load(int block)
{
    if (block == m_block) {
        return true;
    }
    const auto next = static_cast<std::size_t>(block) + 1;
    const qint64 begin = m_index.blocks[next - 1].offset;
    const qint64 end = next < m_index.blocks.size() ? m_index.blocks[next].offset : m_index.endOffset;
    const QByteArray bytes = m_file.seek(begin) ? m_file.read(end - begin) : QByteArray();
    const QString name = QFileInfo(path()).fileName();
    if (bytes.size() < end - begin) {
        m_trouble = RecordingFileText::tr("%1 has become shorter since it was opened").arg(name);
        return false;
    }
    if (!decode(block, bytes)) {
        m_trouble = RecordingFileText::tr("%1 has changed since it was opened").arg(name);
        return false;
    }
    m_trouble.clear();
    return true;
}

bool RecordingFile::decode(int block, const QByteArray &bytes)
{
    const RecordingIndex::Block &place = m_index.blocks[static_cast<std::size_t>(block)];
    const auto columnCount = static_cast<std::size_t>(m_format.columns.size());
    const auto rowCount = static_cast<std::size_t>(rowsIn(block));
    const auto carried = m_index.carried.cbegin() + static_cast<std::ptrdiff_t>(columnCount) * block;
    std::vector<double> now(carried, carried + static_cast<std::ptrdiff_t>(columnCount));
    std::vector<double> factors;
    for (std::size_t column = 0; column < columnCount; ++column) {
        now[column] = std::isnan(now[column]) ? m_index.first[column] : now[column];
        factors.push_back(std::pow(10.0, std::abs(m_format.columns.at(static_cast<int>(column)).power)));
    }
    std::vector<qint32> values;
    std::vector<qint64> steps;
    values.reserve(rowCount * columnCount);
    steps.reserve(rowCount);
    RowDecoder decoder(&m_format);
    qint64 counterBefore = place.lastCounter;
    for (int at = 0; at < bytes.size();) {
        const int lineFeed = bytes.indexOf('\n', at);
        const int end = lineFeed < 0 ? bytes.size() : lineFeed;
        const RowDecoder::Outcome outcome = decoder.decode(bytes.constData() + at, bytes.constData() + end);
        at = end + 1;
        if (outcome != RowDecoder::Outcome::Row) {
            continue; // it was left out before, or the count is wrong in the end
        }
        const qint64 counter = m_format.isLog ? decoder.counter() : counterBefore + 1;
        const int gap = RecordingIndex::stepsBetween(counterBefore, counter);
        steps.push_back(steps.empty() ? place.firstStep : steps.back() + gap);
        counterBefore = counter;
        for (std::size_t column = 0; column < columnCount; ++column) {
            const FieldNumber &number = decoder.numbers()[column];
            now[column] = number.kind == FieldNumber::Kind::Number ? number.value : now[column];
            const bool isDivided = m_format.columns.at(static_cast<int>(column)).power < 0;
            values.push_back(scaled(now[column], factors[column], isDivided));
        }
    }
    if (steps.size() != rowCount) {
        return false;
    }
    m_decodedRows += static_cast<qint64>(rowCount);
    m_values = std::move(values);
    m_steps = std::move(steps);
    m_block = block;
    m_lastRow = 0;
    return true;
}

int RecordingFile::rowsIn(int block) const
{
    const auto next = static_cast<std::size_t>(block) + 1;
    const int end = next < m_index.blocks.size() ? m_index.blocks[next].firstRow : m_index.rowCount;
    return end - m_index.blocks[next - 1].firstRow;
}
