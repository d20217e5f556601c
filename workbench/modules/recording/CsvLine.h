#pragma once

#include <QString>

#include <vector>

/**
 * The fields of one line of a CSV file. Points into the line's bytes, which have to stay.
 *
 * A field that begins with a double quote ends with the next single one; doubled quotes in it are one (RFC 4180).
 * Quotes elsewhere are ordinary characters, and no field goes over more than one line.
 */
class CsvLine
{
public:
    struct Field
    {
        const char *begin;
        const char *end; ///< behind the last byte; blanks around the field are left out
        bool isQuoted;
    };

    /// Splits at \a separator, or not at all when that is 0; \return false when a quote is not closed.
    bool split(const char *begin, const char *end, char separator);

    int count() const;
    const Field &at(int index) const; ///< \a index from 0 to below count()

    /// The field's text: UTF-8, or Latin-1 where the bytes are none.
    QString text(int index) const;

private:
    std::vector<Field> m_fields;
};
