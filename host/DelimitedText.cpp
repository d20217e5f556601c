#include "DelimitedText.h"
#include "host/LineEnd.h"

#include <QStandardItemModel>
#include <QStringList>

#include <algorithm>

namespace
{

bool isNumber(const QString &text)
{
    bool isValid = false;
    text.toDouble(&isValid);
    return isValid;
}

bool looksLikeFormula(const QString &text)
{
    return !text.isEmpty() && QStringLiteral("=+-@\t\r").contains(text.at(0));
}

bool needsQuotes(const QString &text, QChar separator)
{
    return text.contains(separator) || text.contains(QLatin1Char('"')) || text.contains(QLatin1Char('\r')) ||
           text.contains(QLatin1Char('\n')) || text.trimmed().size() != text.size();
}

QString line(const QStringList &texts, const DelimitedFormat &format)
{
    QStringList fields;
    fields.reserve(texts.size());
    for (const QString &text : texts) {
        fields.append(DelimitedText::field(text, format));
    }
    return fields.join(format.separator) + QLatin1String(hostLineEnd);
}

QStringList captions(const QStandardItemModel &model, int role)
{
    QStringList texts;
    for (int column = 0; column < model.columnCount(); ++column) {
        texts.append(DelimitedText::columnCaption(model, column, role));
    }
    return texts;
}

} // namespace

QString DelimitedText::columnCaption(const QStandardItemModel &model, int column, int role)
{
    const QStandardItem *const item = model.horizontalHeaderItem(column);
    return item == nullptr ? QString() : item->data(role).toString();
}

QString DelimitedText::field(const QString &text, const DelimitedFormat &format)
{
    QString content = text;
    if (isNumber(text)) {
        content.replace(QLatin1Char('.'), format.decimalMark);
    } else if (looksLikeFormula(text)) {
        content.prepend(QLatin1Char('\''));
    }
    if (!needsQuotes(content, format.separator)) {
        return content;
    }
    content.replace(QLatin1Char('"'), QStringLiteral("\"\""));
    return QLatin1Char('"') + content + QLatin1Char('"');
}

QString DelimitedText::table(const QStandardItemModel &model, int moduleCaptionRole, const DelimitedFormat &format)
{
    if (model.columnCount() == 0) {
        return {};
    }
    QString text;
    const QStringList modules = captions(model, moduleCaptionRole);
    if (std::any_of(modules.cbegin(), modules.cend(), [](const QString &module) { return !module.isEmpty(); })) {
        text += line(modules, format);
    }
    text += line(captions(model, Qt::DisplayRole), format);
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList texts;
        texts.reserve(model.columnCount());
        for (int column = 0; column < model.columnCount(); ++column) {
            texts.append(model.index(row, column).data().toString());
        }
        text += line(texts, format);
    }
    return text;
}

QString DelimitedText::cells(QModelIndexList selected, const DelimitedFormat &format)
{
    if (selected.isEmpty()) {
        return {};
    }
    std::sort(selected.begin(), selected.end()); // by row, then by column
    const auto isLeftOf = [](const QModelIndex &a, const QModelIndex &b) { return a.column() < b.column(); };
    const auto outermost = std::minmax_element(selected.cbegin(), selected.cend(), isLeftOf);
    const int firstColumn = outermost.first->column();
    const int lastColumn = outermost.second->column();

    QString text;
    auto next = selected.cbegin();
    while (next != selected.cend()) {
        const int row = next->row();
        QStringList texts;
        for (int column = firstColumn; column <= lastColumn; ++column) {
            const bool isSelected = next != selected.cend() && next->row() == row && next->column() == column;
            texts.append(isSelected ? next->data().toString() : QString());
            if (isSelected) {
                ++next;
            }
        }
        text += line(texts, format);
    }
    return text;
}
