#include "modules/recording/CsvLine.h"

#include <QTextCodec>

#include <cstring>

namespace
{

bool isBlank(char character)
{
    return character == ' ' || character == '\t';
}

const char *endOfField(const char *begin, const char *end, char separator)
{
    const void *const found =
        separator == 0 || begin == end ? nullptr : std::memchr(begin, separator, static_cast<std::size_t>(end - begin));
    return found == nullptr ? end : static_cast<const char *>(found);
}

/// The quote that closes a field whose text begins at \a begin; null when there is none.
const char *closingQuote(const char *begin, const char *end)
{
    for (const char *at = begin; at < end; ++at) {
        if (*at != '"') {
            continue;
        }
        if (at + 1 == end || at[1] != '"') {
            return at;
        }
        ++at; // a doubled one
    }
    return nullptr;
}

} // namespace

bool CsvLine::split(const char *begin, const char *end, char separator)
{
    m_fields.clear();
    const char *at = begin;
    while (true) {
        while (at < end && isBlank(*at) && *at != separator) {
            ++at;
        }
        Field field{at, at, at < end && *at == '"'};
        const char *fieldEnd = nullptr;
        if (field.isQuoted) {
            field.begin = at + 1;
            field.end = closingQuote(field.begin, end);
            if (field.end == nullptr) {
                field.end = end;
                m_fields.push_back(field);
                return false;
            }
            fieldEnd = endOfField(field.end + 1, end, separator);
        } else {
            fieldEnd = endOfField(at, end, separator);
            field.end = fieldEnd;
            while (field.end > field.begin && isBlank(field.end[-1])) {
                --field.end;
            }
        }
        m_fields.push_back(field);
        if (fieldEnd == end) {
            return true;
        }
        at = fieldEnd + 1;
    }
}

int CsvLine::count() const
{
    return static_cast<int>(m_fields.size());
}

const CsvLine::Field &CsvLine::at(int index) const
{
    return m_fields[static_cast<std::size_t>(index)];
}

QString CsvLine::text(int index) const
{
    const Field &field = at(index);
    QByteArray bytes(field.begin, static_cast<int>(field.end - field.begin));
    if (field.isQuoted) {
        bytes.replace("\"\"", "\"");
    }
    QTextCodec::ConverterState state;
    const QString text = QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    return (state.invalidChars + state.remainingChars > 0 ? QString::fromLatin1(bytes) : text).simplified();
}
