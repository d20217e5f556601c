#include "modules/recording/RecordingFormat.h"

#include "modules/recording/CsvLine.h"
#include "modules/recording/FieldNumber.h"

#include <QCoreApplication>
#include <QHash>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <array>

namespace
{

struct RecordingFormatText
{
    Q_DECLARE_TR_FUNCTIONS(RecordingFormat)
};

/// A line of the head; \a begin and \a end without its line end.
struct HeadLine
{
    const char *begin;
    const char *end;
    int number; // in the file, from 1
};

QVector<HeadLine> linesOf(const QByteArray &head, int firstByte, bool isWhole)
{
    QVector<HeadLine> lines;
    int number = 1;
    for (int at = firstByte; at < head.size() && lines.size() < RecordingFormat::judgedLines; ++number) {
        const int lineFeed = head.indexOf('\n', at);
        if (lineFeed < 0 && !isWhole) {
            break; // its end is not in the head
        }
        int end = lineFeed < 0 ? head.size() : lineFeed;
        const int next = end + 1;
        while (end > at && head.at(end - 1) == '\r') {
            --end;
        }
        if (end > at) {
            lines.append({head.constData() + at, head.constData() + end, number});
        }
        at = next;
    }
    return lines;
}

/// Fields of a line, without the empty one behind a separator that ends it.
int fieldCountOf(const HeadLine &line, char separator)
{
    CsvLine fields;
    fields.split(line.begin, line.end, separator);
    const CsvLine::Field &last = fields.at(fields.count() - 1);
    return fields.count() - (fields.count() > 1 && last.begin == last.end && !last.isQuoted ? 1 : 0);
}

bool isLogStart(const HeadLine &line, char separator)
{
    CsvLine fields;
    return fields.split(line.begin, line.end, separator) && fields.text(0) == QLatin1String("Module:");
}

char separatorOf(const QVector<HeadLine> &lines)
{
    constexpr std::array<char, 3> candidates{'\t', ';', ','};
    char splitsHeader = 0;
    for (const char candidate : candidates) {
        const int count = fieldCountOf(lines.constFirst(), candidate);
        const bool isUsed = count > 1 || isLogStart(lines.constFirst(), candidate);
        if (isUsed && lines.size() > 1 && fieldCountOf(lines.at(1), candidate) == count) {
            return candidate;
        }
        splitsHeader = isUsed && splitsHeader == 0 ? candidate : splitsHeader;
    }
    return splitsHeader;
}

/// Separates "Position [mm]" into name and unit.
void setName(RecordedColumn *column, const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("^(.*\\S)\\s*\\[([^\\[\\]]*)\\]$"));
    const QRegularExpressionMatch match = pattern.match(text);
    column->name = match.hasMatch() ? match.captured(1) : text;
    column->unit = match.captured(2).trimmed();
}

/// Whether a text is a number but for its digit grouping: then it is an error, not a column of text.
bool isGroupedNumber(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("^[-+]?[0-9.,]+$"));
    return text.contains(QLatin1Char('.')) && text.contains(QLatin1Char(',')) && pattern.match(text).hasMatch();
}

class FormatReader
{
public:
    FormatReader(const QByteArray &head, int firstByte, bool isWhole)
        : m_head(head), m_lines(linesOf(head, firstByte, isWhole))
    {
    }

    RecordingFormatResult read()
    {
        if (m_lines.isEmpty()) {
            setError(
                1, 0, RecordingFormatText::tr("a header line with the names of the columns"),
                m_head.size() < RecordingFormat::maximumLineBytes
                    ? RecordingFormatText::tr("an empty file")
                    : RecordingFormatText::tr("a line of more than %1 bytes").arg(RecordingFormat::maximumLineBytes));
            return m_result;
        }
        m_format.separator = separatorOf(m_lines);
        m_format.mayHaveDecimalComma = m_format.separator != ',';
        m_format.isLog = isLogStart(m_lines.constFirst(), m_format.separator);
        m_format.isLog ? readLog() : readTable();
        return m_result;
    }

private:
    void setError(int line, int column, const QString &expected, const QString &found)
    {
        m_result.error = recordingProblem(line, column, expected, found);
    }

    QStringList textsOf(int index) const
    {
        CsvLine fields;
        fields.split(m_lines.at(index).begin, m_lines.at(index).end, m_format.separator);
        QStringList texts;
        for (int field = 0; field < fields.count(); ++field) {
            texts.append(fields.text(field));
        }
        return texts;
    }

    void setDataBegin(int headerLines)
    {
        const HeadLine &last = m_lines.at(headerLines - 1);
        m_format.dataLine = last.number + 1;
        const int lineFeed = m_head.indexOf('\n', static_cast<int>(last.end - m_head.constData()));
        m_format.dataOffset = lineFeed < 0 ? m_head.size() : lineFeed + 1;
    }

    void readLog();
    int curvesInLines() const;
    void readTable();
    bool hasNumber(int index) const;
    void addTableColumns(const QStringList &modules, const QStringList &names, int headerLines);
    bool isTextColumn(int field, int headerLines) const;

    const QByteArray &m_head;
    const QVector<HeadLine> m_lines;
    RecordingFormatResult m_result;
    RecordingFormat &m_format = m_result.format;
};

void FormatReader::readLog()
{
    const QStringList modules = textsOf(0);
    const QStringList names = m_lines.size() > 1 ? textsOf(1) : QStringList(QString());
    if (names.constFirst() != QLatin1String("Counter")) {
        setError(m_lines.size() > 1 ? m_lines.at(1).number : 2, 1, RecordingFormatText::tr("\"Counter\""),
                 QLatin1Char('"') + names.constFirst() + QLatin1Char('"'));
        return;
    }
    m_format.endsWithSeparator = modules.constLast().isEmpty() && names.constLast().isEmpty();
    setDataBegin(2);
    const int curves = curvesInLines();
    if (curves == 0) {
        setError(m_format.dataLine, 0, RecordingFormatText::tr("lines with a counter and two values for each curve"),
                 m_lines.size() > 2 ? RecordingFormatText::tr("none") : RecordingFormatText::tr("the end of the file"));
        return;
    }
    if (curves > RecordingFormat::maximumColumns / 2) {
        setError(m_format.dataLine, 0,
                 RecordingFormatText::tr("at most %1 columns").arg(RecordingFormat::maximumColumns),
                 QString::number(2 * curves));
        return;
    }
    const int named = (fieldCountOf(m_lines.at(1), m_format.separator) - 1) / 2;
    if (named != curves) {
        m_format.notes.append(
            RecordingFormatText::tr("The header names %1 curves and the lines hold %2: the names may be those of "
                                    "other curves.")
                .arg(named)
                .arg(curves));
    }
    m_format.fieldCount = 1 + 2 * curves;
    for (int field = 1; field < m_format.fieldCount; ++field) {
        RecordedColumn column;
        column.group = (field - 1) / 2;
        column.number = (field - 1) % 2;
        column.field = field;
        column.module = modules.value(field);
        const QString side = column.number == 0 ? QStringLiteral("X") : QStringLiteral("Y");
        setName(&column, names.value(field));
        if (column.name.isEmpty()) {
            column.name = side;
        } else if (names.value(field) == names.value(column.number == 0 ? field + 1 : field - 1)) {
            column.name += QStringLiteral(" (") + side + QLatin1Char(')');
        }
        m_format.columns.append(column);
    }
}

int FormatReader::curvesInLines() const
{
    QHash<int, int> linesByCurves;
    int best = 0;
    for (int index = 2; index < m_lines.size(); ++index) {
        const int fields = fieldCountOf(m_lines.at(index), m_format.separator);
        // A line whose last two fields are empty loses one of them to the count.
        const int curves = fields / 2;
        if (curves > 0 && ++linesByCurves[curves] > linesByCurves.value(best)) {
            best = curves;
        }
    }
    return best;
}

void FormatReader::readTable()
{
    if (hasNumber(0)) {
        const QString found = textsOf(0).join(QStringLiteral(" ")).left(40);
        setError(m_lines.constFirst().number, 1, RecordingFormatText::tr("a header line with the names of the columns"),
                 RecordingFormatText::tr("the numbers \"%1\"").arg(found));
        return;
    }
    // The export of a plot window has the captions of the modules above the names.
    const bool hasModules = m_lines.size() > 2 && !hasNumber(1) && hasNumber(2);
    const int headerLines = hasModules ? 2 : 1;
    setDataBegin(headerLines);
    if (m_lines.size() <= headerLines) {
        setError(m_format.dataLine, 0, RecordingFormatText::tr("lines with numbers"),
                 RecordingFormatText::tr("the end of the file"));
        return;
    }
    addTableColumns(hasModules ? textsOf(0) : QStringList(), textsOf(headerLines - 1), headerLines);
}

bool FormatReader::hasNumber(int index) const
{
    CsvLine fields;
    fields.split(m_lines.at(index).begin, m_lines.at(index).end, m_format.separator);
    for (int field = 0; field < fields.count(); ++field) {
        const CsvLine::Field &bytes = fields.at(field);
        if (fieldNumber(bytes.begin, bytes.end, m_format.mayHaveDecimalComma).kind == FieldNumber::Kind::Number) {
            return true;
        }
    }
    return false;
}

void FormatReader::addTableColumns(const QStringList &modules, const QStringList &names, int headerLines)
{
    m_format.fieldCount = fieldCountOf(m_lines.at(headerLines - 1), m_format.separator);
    QSet<QString> taken;
    int left = 0;
    QStringList textColumns;
    for (int field = 0; field < m_format.fieldCount; ++field) {
        const QString name = names.value(field);
        if (isTextColumn(field, headerLines)) {
            textColumns.append(QStringLiteral("%1 (\"%2\")").arg(field + 1).arg(name));
            continue;
        }
        if (m_format.columns.size() == RecordingFormat::maximumColumns) {
            ++left;
            continue;
        }
        RecordedColumn column;
        column.number = m_format.columns.size();
        column.field = field;
        column.module = modules.value(field);
        setName(&column, name);
        if (column.name.isEmpty() || taken.contains(column.name)) {
            column.name = (column.name + QLatin1Char(' ') + QStringLiteral("column %1").arg(field + 1)).trimmed();
        }
        taken.insert(column.name);
        m_format.columns.append(column);
    }
    if (!textColumns.isEmpty()) {
        m_format.notes.append(RecordingFormatText::tr("Columns that hold text and are left out: %1.")
                                  .arg(textColumns.join(QStringLiteral(", "))));
    }
    if (left > 0) {
        m_format.notes.append(RecordingFormatText::tr("Of the columns, the first %1 are offered and %2 are left out.")
                                  .arg(RecordingFormat::maximumColumns)
                                  .arg(left));
    }
    bool hasNumbers = false;
    for (int index = headerLines; index < m_lines.size() && !hasNumbers; ++index) {
        hasNumbers = hasNumber(index);
    }
    if ((m_format.columns.isEmpty() || !hasNumbers) && !textColumns.isEmpty()) {
        const HeadLine &first = m_lines.at(headerLines);
        CsvLine fields;
        fields.split(first.begin, first.end, m_format.separator);
        setError(first.number, 1, RecordingFormatText::tr("a number"),
                 QLatin1Char('"') + fields.text(0).left(40) + QLatin1Char('"'));
    }
}

bool FormatReader::isTextColumn(int field, int headerLines) const
{
    CsvLine fields;
    for (int index = headerLines; index < m_lines.size(); ++index) {
        fields.split(m_lines.at(index).begin, m_lines.at(index).end, m_format.separator);
        if (field >= fields.count()) {
            continue;
        }
        const CsvLine::Field &bytes = fields.at(field);
        const FieldNumber number = fieldNumber(bytes.begin, bytes.end, m_format.mayHaveDecimalComma);
        if (number.kind != FieldNumber::Kind::Missing) {
            return number.kind == FieldNumber::Kind::Text && !isGroupedNumber(fields.text(field));
        }
    }
    return false;
}

} // namespace

RecordingFormatResult readRecordingFormat(const QByteArray &head, bool isWhole)
{
    RecordingFormatResult result;
    if (head.startsWith("\xFF\xFE") || head.startsWith("\xFE\xFF")) {
        result.error =
            recordingProblem(1, 1, RecordingFormatText::tr("text in UTF-8"), RecordingFormatText::tr("text in UTF-16"));
        return result;
    }
    const int zero = head.indexOf('\0');
    if (zero >= 0) {
        result.error = recordingProblem(1 + head.left(zero).count('\n'), 0, RecordingFormatText::tr("text"),
                                        RecordingFormatText::tr("a zero byte"));
        return result;
    }
    constexpr int markBytes = 3;
    return FormatReader(head, head.startsWith("\xEF\xBB\xBF") ? markBytes : 0, isWhole).read();
}

QString recordingProblem(int line, int column, const QString &expected, const QString &found)
{
    return column == 0 ? RecordingFormatText::tr("line %1: expected %2, found %3").arg(line).arg(expected, found)
                       : RecordingFormatText::tr("line %1, column %2: expected %3, found %4")
                             .arg(line)
                             .arg(column)
                             .arg(expected, found);
}
