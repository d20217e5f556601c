#include "logging/MessageModel.h"

#include "logging/NamedPath.h"

#include <QApplication>
#include <QBrush>
#include <QFont>
#include <QLocale>
#include <QStyle>

#include <algorithm>

namespace
{

QStyle::StandardPixmap symbolOf(QtMsgType type)
{
    switch (severity(type)) {
    case 0:
    case 1:
        return QStyle::SP_MessageBoxInformation;
    case 2:
        return QStyle::SP_MessageBoxWarning;
    default:
        return QStyle::SP_MessageBoxCritical;
    }
}

bool isDebug(const LogMessage &message)
{
    return message.type == QtDebugMsg;
}

/// Beside the text itself: a path in it makes it look like a link.
QVariant textData(const LogMessage &message, int role)
{
    const bool isLink = !message.path.isEmpty();
    switch (role) {
    case Qt::ToolTipRole:
        return isLink ? MessageModel::tr("%1\n(A click opens %2)").arg(message.text, message.path) : message.text;
    case MessageModel::pathRole:
        return message.path;
    case Qt::ForegroundRole:
        return isLink ? QVariant(QApplication::palette().brush(QPalette::Link)) : QVariant();
    case Qt::FontRole: {
        QFont font = QApplication::font("QTreeView");
        font.setUnderline(true);
        return isLink ? QVariant(font) : QVariant();
    }
    default:
        return {};
    }
}

} // namespace

void MessageModel::append(const QVector<LogMessage> &messages)
{
    // Of a batch beyond the bound only the end would stay.
    QVector<LogMessage> added = messages.mid(std::max(0, messages.size() - maximumMessages));
    if (added.isEmpty()) {
        return;
    }
    for (LogMessage &message : added) {
        if (!isDebug(message)) { // of which there are too many to look for each in the file system
            message.path = namedPath(message.text);
        }
    }
    beginInsertRows({}, m_messages.size(), m_messages.size() + added.size() - 1);
    m_messages += added;
    endInsertRows();
    m_debugLines += int(std::count_if(added.cbegin(), added.cend(), isDebug));
    dropFirstDebugLines(m_debugLines - maximumDebugLines);
    dropFirst(m_messages.size() - maximumMessages);
}

void MessageModel::clear()
{
    beginResetModel();
    m_messages.clear();
    m_debugLines = 0;
    endResetModel();
}

const LogMessage &MessageModel::message(int row) const
{
    return m_messages.at(row);
}

int MessageModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_messages.size();
}

int MessageModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant MessageModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const LogMessage &message = m_messages.at(index.row());
    if (role == Qt::DecorationRole && index.column() == Severity && !isDebug(message)) {
        return QApplication::style()->standardIcon(symbolOf(message.type));
    }
    if (index.column() == Text && role != Qt::DisplayRole) {
        return textData(message, role);
    }
    if (role != Qt::DisplayRole) {
        return {};
    }
    switch (index.column()) {
    case Time:
        return message.time.toString(QStringLiteral("hh:mm:ss'%1'zzz").arg(QLocale().decimalPoint()));
    case Severity: {
        const QString names[] = {tr("Debug"), tr("Info"), tr("Warning"), tr("Critical"), tr("Fatal")};
        return names[severity(message.type)];
    }
    case Category:
        return message.category;
    default:
        return message.text.simplified(); // some have line ends in them, a row has one line
    }
}

QVariant MessageModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= ColumnCount) {
        return {};
    }
    const QString names[] = {tr("Time"), tr("Severity"), tr("Category"), tr("Message")};
    return names[section];
}

void MessageModel::dropFirst(int count)
{
    if (count <= 0) {
        return;
    }
    beginRemoveRows({}, 0, count - 1);
    const auto end = m_messages.begin() + count;
    m_debugLines -= int(std::count_if(m_messages.begin(), end, isDebug));
    m_messages.erase(m_messages.begin(), end);
    endRemoveRows();
}

void MessageModel::dropFirstDebugLines(int count)
{
    for (int row = 0; count > 0;) {
        // Debug lines mostly stand side by side: they leave in runs.
        int end = row;
        while (end < m_messages.size() && end - row < count && isDebug(m_messages.at(end))) {
            ++end;
        }
        if (end == row) {
            ++row;
            continue;
        }
        beginRemoveRows({}, row, end - 1);
        m_messages.erase(m_messages.begin() + row, m_messages.begin() + end);
        m_debugLines -= end - row;
        count -= end - row;
        endRemoveRows();
    }
}

void MessageFilter::setMinimum(QtMsgType type)
{
    m_minimum = type;
    invalidateFilter();
}

void MessageFilter::setShowsDebug(bool on)
{
    m_showsDebug = on;
    invalidateFilter();
}

bool MessageFilter::filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const
{
    Q_UNUSED(sourceParent)
    const auto *const messages = qobject_cast<const MessageModel *>(sourceModel());
    if (messages == nullptr) {
        return true;
    }
    const QtMsgType type = messages->message(sourceRow).type;
    return type == QtDebugMsg ? m_showsDebug : severity(type) >= severity(m_minimum);
}
