#include "window/MessagePanel.h"

#include "logging/MessageLog.h"
#include "logging/MessageModel.h"
#include "window/OpenedPath.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace
{

constexpr int panelMarginWidth = 4;   // widget pixels
constexpr int minimumViewHeight = 48; // widget pixels

} // namespace

MessagePanel::MessagePanel(MessageLog *log, QWidget *parent)
    : QWidget(parent), m_model(new MessageModel(this)), m_filter(new MessageFilter(this))
{
    m_filter->setSourceModel(m_model);
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(panelMarginWidth, panelMarginWidth, panelMarginWidth, panelMarginWidth);
    layout->addLayout(makeControls());
    makeView();
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
    minimum->setToolTip(tr("Which messages are shown; debug lines have a box of their own"));
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

    const auto button = [](const QString &text, const QString &toolTip) {
        auto *const made = new QPushButton(text);
        made->setToolTip(toolTip);
        return made;
    };
    m_openButton = button(tr("&Open"), tr("Open the file or folder that the current message names"));
    connect(m_openButton, &QPushButton::clicked, this, [this] { OpenedPath::open(currentPath()); });
    auto *const copyButton =
        button(tr("Cop&y"), tr("Copy the selected messages, or all that are shown when none is selected"));
    connect(copyButton, &QPushButton::clicked, this, &MessagePanel::copy);
    auto *const clearButton = button(tr("C&lear"), tr("Forget all messages"));
    connect(clearButton, &QPushButton::clicked, m_model, &MessageModel::clear);

    auto *const layout = new QHBoxLayout;
    layout->addWidget(label);
    layout->addWidget(minimum);
    layout->addWidget(debug);
    layout->addStretch(1);
    for (QPushButton *const each : {m_openButton, copyButton, clearButton}) {
        layout->addWidget(each);
    }
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
    m_view->setMouseTracking(true); // for the cursor over links
    m_view->setWhatsThis(tr("What containers and the workbench report. A click opens the file or folder that an "
                            "underlined message names."));
    makeActions();
    connect(m_view, &QTreeView::entered, this, [this](const QModelIndex &cell) {
        const bool isLink = !cell.data(MessageModel::pathRole).toString().isEmpty();
        m_view->viewport()->setCursor(isLink ? Qt::PointingHandCursor : Qt::ArrowCursor);
    });
    connect(m_view, &QTreeView::clicked, this, [](const QModelIndex &cell) {
        const QString path = cell.data(MessageModel::pathRole).toString();
        if (!path.isEmpty() && QApplication::keyboardModifiers() == Qt::NoModifier) { // else rows are selected
            OpenedPath::open(path);
        }
    });
    connect(m_view->selectionModel(), &QItemSelectionModel::currentChanged, this, &MessagePanel::offerPath);
    connect(m_model, &MessageModel::modelReset, this, &MessagePanel::offerPath);
    offerPath();
}

void MessagePanel::makeActions()
{
    const auto add = [this](const QString &text, const QKeySequence &keys, const QString &tip) {
        auto *const action = new QAction(text, m_view);
        action->setShortcut(keys);
        action->setShortcutContext(Qt::WidgetShortcut);
        action->setStatusTip(tip);
        m_view->addAction(action);
        return action;
    };
    QAction *const open = add(tr("Open"), QKeySequence(Qt::Key_Return), m_openButton->toolTip());
    connect(open, &QAction::triggered, this, [this] { OpenedPath::open(currentPath()); });
    QAction *const folder = add(tr("Open Folder"), QKeySequence(QStringLiteral("Ctrl+Return")),
                                tr("Open the folder of the file that the current message names"));
    connect(folder, &QAction::triggered, this, [this] { OpenedPath::openFolder(currentPath()); });
    QAction *const copyPath = add(tr("Copy Path"), QKeySequence(), tr("Copy the path that the current message names"));
    connect(copyPath, &QAction::triggered, this, [this] { QApplication::clipboard()->setText(currentPath()); });
    m_pathActions = {open, folder, copyPath};
    QAction *const copyAction = add(tr("Copy"), QKeySequence(QKeySequence::Copy), tr("Copy the selected messages"));
    connect(copyAction, &QAction::triggered, this, &MessagePanel::copy);
    m_view->setContextMenuPolicy(Qt::ActionsContextMenu);
}

QString MessagePanel::currentPath() const
{
    const QModelIndex current = m_view->currentIndex();
    return current.sibling(current.row(), MessageModel::Text).data(MessageModel::pathRole).toString();
}

void MessagePanel::offerPath()
{
    const bool hasPath = !currentPath().isEmpty();
    m_openButton->setEnabled(hasPath);
    for (QAction *const action : qAsConst(m_pathActions)) {
        action->setEnabled(hasPath);
    }
}

void MessagePanel::copy() const
{
    QApplication::clipboard()->setText(text());
}
