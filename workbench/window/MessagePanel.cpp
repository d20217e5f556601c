#include "window/MessagePanel.h"

#include "logging/MessageLog.h"
#include "logging/MessageModel.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace
{

constexpr int marginWidth = 4;        // widget pixels
constexpr int minimumViewHeight = 48; // widget pixels

} // namespace

MessagePanel::MessagePanel(MessageLog *log, QWidget *parent)
    : QWidget(parent), m_model(new MessageModel(this)), m_filter(new MessageFilter(this))
{
    m_filter->setSourceModel(m_model);
    makeView();
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(marginWidth, marginWidth, marginWidth, marginWidth);
    layout->addLayout(makeControls());
    layout->addWidget(m_view, 1);
    connect(log, &MessageLog::arrived, this, [this](const QVector<LogMessage> &messages) {
        const QScrollBar *const bar = m_view->verticalScrollBar();
        const bool isAtEnd = bar->value() == bar->maximum();
        m_model->append(messages);
        if (isAtEnd) {
            m_view->scrollToBottom();
        }
    });
}

QString MessagePanel::text() const
{
    QModelIndexList rows = m_view->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    if (rows.isEmpty()) {
        for (int row = 0; row < m_filter->rowCount(); ++row) {
            rows.append(m_filter->index(row, 0));
        }
    }
    QString lines;
    for (const QModelIndex &row : qAsConst(rows)) {
        QStringList cells;
        for (int column = 0; column < MessageModel::ColumnCount; ++column) {
            cells.append(row.sibling(row.row(), column).data().toString());
        }
        lines += cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
    }
    return lines;
}

QLayout *MessagePanel::makeControls()
{
    auto *const minimum = new QComboBox;
    minimum->addItem(tr("Everything"), int(QtInfoMsg));
    minimum->addItem(tr("Warnings and errors"), int(QtWarningMsg));
    minimum->addItem(tr("Errors only"), int(QtCriticalMsg));
    connect(minimum, QOverload<int>::of(&QComboBox::activated), this, [=] {
        m_filter->setMinimum(QtMsgType(minimum->currentData().toInt()));
        m_view->scrollToBottom();
    });
    auto *const label = new QLabel(tr("&Show:"));
    label->setBuddy(minimum);

    auto *const debug = new QCheckBox(tr("&Debug lines"));
    debug->setToolTip(tr("Containers write one debug line for each line that they record, and many others"));
    connect(debug, &QCheckBox::toggled, this, [this](bool on) {
        m_filter->setShowsDebug(on);
        m_view->scrollToBottom();
    });

    auto *const copyButton = new QPushButton(tr("Cop&y"));
    copyButton->setToolTip(tr("Copy the selected messages, or all that are shown when none is selected"));
    connect(copyButton, &QPushButton::clicked, this, &MessagePanel::copy);
    auto *const clearButton = new QPushButton(tr("C&lear"));
    clearButton->setToolTip(tr("Forget all messages"));
    connect(clearButton, &QPushButton::clicked, m_model, &MessageModel::clear);

    auto *const layout = new QHBoxLayout;
    layout->addWidget(label);
    layout->addWidget(minimum);
    layout->addWidget(debug);
    layout->addStretch(1);
    layout->addWidget(copyButton);
    layout->addWidget(clearButton);
    return layout;
}

void MessagePanel::makeView()
{
    m_view = new QTreeView; // which, unlike a table, lets the Tab key leave
    m_view->setModel(m_filter);
    m_view->setAccessibleName(tr("Messages"));
    m_view->setRootIsDecorated(false);
    m_view->setUniformRowHeights(true);
    m_view->setAlternatingRowColors(true);
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setMinimumHeight(minimumViewHeight);
    m_view->header()->setStretchLastSection(true);
    const QFontMetrics metrics(m_view->font());
    const QStringList widest = {QStringLiteral("00:00:00.0000"), MessageModel::tr("Warning") + QStringLiteral("MMMM"),
                                QStringLiteral("host.lowlevel")};
    for (int column = 0; column < widest.size(); ++column) {
        m_view->setColumnWidth(column, metrics.horizontalAdvance(widest.at(column)) + 2 * metrics.averageCharWidth());
    }
    auto *const shortcut = new QShortcut(QKeySequence::Copy, m_view);
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, &MessagePanel::copy);
}

void MessagePanel::copy() const
{
    QApplication::clipboard()->setText(text());
}
