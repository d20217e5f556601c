#pragma once

#include "logging/MessageLog.h"

#include <QAbstractTableModel>
#include <QSortFilterProxyModel>

/**
 * The last messages of the logger as a table, the newest at the end.
 *
 * Bounded, the oldest leave first; debug lines have a bound of their own, so that a flood of them cannot push out the
 * warnings. GUI thread.
 */
class MessageModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        Time,
        Severity,
        Category,
        Text,
        ColumnCount
    };

    /// The path of the file or folder that a message names, of the cells with the text; empty when it names none.
    static constexpr int pathRole = Qt::UserRole;

    static constexpr int maximumMessages = 2000;
    static constexpr int maximumDebugLines = 1000; ///< of maximumMessages

    using QAbstractTableModel::QAbstractTableModel;

    void append(const QVector<LogMessage> &messages);
    void clear();
    /// The message in \a row, 0 to below rowCount().
    const LogMessage &message(int row) const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void dropFirst(int count);
    void dropFirstDebugLines(int count);

    QVector<LogMessage> m_messages;
    int m_debugLines = 0;
};

/// Shows the messages of a MessageModel from a severity on, and debug lines only if asked to.
class MessageFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    /// Messages from \a type on are shown, QtInfoMsg at the start; debug lines are not concerned.
    void setMinimum(QtMsgType type);
    void setShowsDebug(bool on); ///< Off at the start.

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;

private:
    QtMsgType m_minimum = QtInfoMsg;
    bool m_showsDebug = false;
};
