#include "modules/recording/RowDecoder.h"

#include <QCoreApplication>

namespace
{

struct RowDecoderText
{
    Q_DECLARE_TR_FUNCTIONS(RowDecoder)
};

bool isEmpty(const CsvLine::Field &field)
{
    return field.begin == field.end;
}

} // namespace

RowDecoder::RowDecoder(const RecordingFormat *format)
    : m_format(format), m_numbers(static_cast<std::size_t>(format->columns.size()))
{
}

RowDecoder::Outcome RowDecoder::decode(const char *begin, const char *end)
{
    while (end > begin && end[-1] == '\r') {
        --end;
    }
    if (begin == end) {
        return Outcome::Blank;
    }
    if (!m_fields.split(begin, end, m_format->separator)) {
        fail(m_fields.count() - 1, RowDecoderText::tr("a closing quote"));
        return Outcome::Damaged;
    }
    const bool isWhole = hasRightCount() && (!m_format->isLog || readCounter()) && readColumns();
    return isWhole ? Outcome::Row : Outcome::Damaged;
}

const std::vector<FieldNumber> &RowDecoder::numbers() const
{
    return m_numbers;
}

qint64 RowDecoder::counter() const
{
    return m_counter;
}

QString RowDecoder::problem(int lineNumber) const
{
    constexpr int shownCharacters = 40;
    const QString found = m_badField < 0
                              ? QString::number(m_fields.count())
                              : QLatin1Char('"') + m_fields.text(m_badField).left(shownCharacters) + QLatin1Char('"');
    return recordingProblem(lineNumber, m_badField + 1, m_expected, found);
}

bool RowDecoder::hasRightCount()
{
    const int count = m_fields.count();
    const bool hasEnd = count == m_format->fieldCount + 1 && isEmpty(m_fields.at(count - 1));
    if (m_format->isLog) {
        return hasEnd || (count == m_format->fieldCount && !m_format->endsWithSeparator) ||
               fail(-1,
                    RowDecoderText::tr("%1 fields").arg(m_format->fieldCount + (m_format->endsWithSeparator ? 1 : 0)));
    }
    for (int field = m_format->fieldCount; field < count; ++field) {
        if (!isEmpty(m_fields.at(field))) {
            return fail(field, RowDecoderText::tr("no more than %1 columns").arg(m_format->fieldCount));
        }
    }
    return true;
}

bool RowDecoder::readCounter()
{
    const CsvLine::Field &field = m_fields.at(0);
    const FieldNumber number = fieldNumber(field.begin, field.end, false);
    constexpr double maximumCounter = 1e15; // whole numbers without rounding
    if (number.kind != FieldNumber::Kind::Number || number.decimals > 0 || number.value < 0.0 ||
        number.value > maximumCounter) {
        return fail(0, RowDecoderText::tr("a counter"));
    }
    m_counter = static_cast<qint64>(number.value);
    return true;
}

bool RowDecoder::readColumns()
{
    for (int index = 0; index < m_format->columns.size(); ++index) {
        FieldNumber &number = m_numbers[static_cast<std::size_t>(index)];
        const int fieldIndex = m_format->columns.at(index).field;
        if (fieldIndex >= m_fields.count()) {
            number = FieldNumber();
            continue;
        }
        const CsvLine::Field &field = m_fields.at(fieldIndex);
        number = fieldNumber(field.begin, field.end, m_format->mayHaveDecimalComma);
        if (number.kind == FieldNumber::Kind::Text) {
            return fail(fieldIndex, RowDecoderText::tr("a number"));
        }
        if (number.decimalMark != 0) {
            m_decimalMark = m_decimalMark == 0 ? number.decimalMark : m_decimalMark;
            if (number.decimalMark != m_decimalMark) {
                return fail(fieldIndex,
                            RowDecoderText::tr("the decimal mark of the lines before (\"%1\") and no digit grouping")
                                .arg(QLatin1Char(m_decimalMark)));
            }
        }
    }
    return true;
}

bool RowDecoder::fail(int field, const QString &expected)
{
    m_badField = field;
    m_expected = expected;
    return false;
}
