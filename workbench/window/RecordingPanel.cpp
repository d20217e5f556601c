#include "window/RecordingPanel.h"

#include "logging/Recordings.h"
#include "window/OpenedPath.h"

#include <QDir>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>

namespace
{

constexpr int recordingMarginWidth = 4; // widget pixels

QString countsOf(const RecordingWatch &watch)
{
    if (watch.file().path().isEmpty()) {
        return {};
    }
    const QLocale locale;
    QString text = RecordingPanel::tr("Lines: %1, bytes: %2")
                       .arg(locale.toString(watch.file().dataLines()), locale.toString(watch.file().bytes()));
    if (watch.file().lastLineTime().isValid()) {
        const QString time = locale.toString(watch.file().lastLineTime().time(), QStringLiteral("hh:mm:ss"));
        text += RecordingPanel::tr(", last line: %1").arg(time);
    }
    if (watch.missingLines() > 0) {
        text += RecordingPanel::tr(", not in the file: %1").arg(locale.toString(watch.missingLines()));
    }
    if (watch.linesWithOldValues() > 0) {
        text += RecordingPanel::tr(", with old values: %1").arg(locale.toString(watch.linesWithOldValues()));
    }
    return text;
}

} // namespace

RecordingPanel::RecordingPanel(Recordings *recordings, QWidget *parent) : QWidget(parent)
{
    auto *const list = new QWidget;
    m_layout = new QVBoxLayout(list);
    m_layout->setContentsMargins(recordingMarginWidth, recordingMarginWidth, recordingMarginWidth,
                                 recordingMarginWidth);
    m_hint = new QLabel(tr("No container has been opened yet."));
    m_layout->addWidget(m_hint);
    m_layout->addStretch(1);
    auto *const scrollArea = new QScrollArea;
    scrollArea->setWidgetResizable(true);
    scrollArea->setFrameShape(QFrame::NoFrame);
    scrollArea->setAccessibleName(tr("Recordings"));
    scrollArea->setWhatsThis(tr("For each container: whether it records, into which file, what has arrived there, and "
                                "why the last recording ended."));
    scrollArea->setWidget(list);
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scrollArea);
    connect(recordings, &Recordings::added, this, &RecordingPanel::add);
    const QList<RecordingWatch *> watches = recordings->watches();
    for (RecordingWatch *const watch : watches) {
        add(watch);
    }
}

void RecordingPanel::add(RecordingWatch *watch)
{
    m_hint->hide();
    Entry entry;
    entry.symbol = new QLabel;
    entry.headline = new QLabel;
    entry.headline->setWordWrap(true);
    QFont bold = entry.headline->font();
    bold.setBold(true);
    entry.headline->setFont(bold);
    entry.path = new QLineEdit;
    entry.path->setReadOnly(true);
    entry.path->setAccessibleName(tr("%1: path of the log").arg(watch->title()));
    entry.path->setToolTip(tr("The file of the recording that runs, or of the last one"));
    const auto button = [watch](const QString &text, const QString &toolTip, void (*open)(const QString &)) {
        auto *const made = new QPushButton(text);
        made->setToolTip(toolTip);
        connect(made, &QPushButton::clicked, watch, [watch, open] { open(watch->file().path()); });
        return made;
    };
    entry.buttons = {
        button(tr("Open"), tr("Open the file with the program that the desktop has for it"), &OpenedPath::open),
        button(tr("Folder"), tr("Open the folder that the file is in"), &OpenedPath::openFolder)};
    entry.counts = new QLabel;
    entry.failure = new QLabel;
    entry.failure->setWordWrap(true);

    // Few lines, for the panel has little height.
    auto *const group = new QWidget;
    auto *const layout = new QGridLayout(group);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setColumnStretch(2, 1);
    layout->addWidget(new QLabel(tr("%1:").arg(watch->title())), 0, 0, Qt::AlignTop);
    layout->addWidget(entry.symbol, 0, 1, Qt::AlignTop);
    layout->addWidget(entry.headline, 0, 2);
    layout->addWidget(entry.counts, 0, 3, Qt::AlignTop);
    auto *const pathRow = new QHBoxLayout;
    pathRow->addWidget(entry.path, 1);
    for (QPushButton *const each : qAsConst(entry.buttons)) {
        pathRow->addWidget(each);
    }
    layout->addLayout(pathRow, 1, 0, 1, 4);
    layout->addWidget(entry.failure, 2, 0, 1, 4);
    m_layout->insertWidget(m_layout->count() - 1, group); // before the stretch
    connect(watch, &QObject::destroyed, group, &QObject::deleteLater);
    connect(watch, &RecordingWatch::changed, group, [=] { show(*watch, entry); });
    show(*watch, entry);
}

void RecordingPanel::show(const RecordingWatch &watch, const Entry &entry)
{
    const bool hasProblem = !watch.problem().isEmpty() || !watch.warning().isEmpty() || watch.endedUnasked();
    const int side = entry.symbol->style()->pixelMetric(QStyle::PM_SmallIconSize);
    const QIcon icon = entry.symbol->style()->standardIcon(QStyle::SP_MessageBoxWarning);
    entry.symbol->setPixmap(hasProblem ? icon.pixmap(side, side) : QPixmap());
    entry.symbol->setVisible(hasProblem);
    entry.headline->setText(watch.headline());
    const QString path = QDir::toNativeSeparators(watch.file().path());
    if (entry.path->text() != path) { // so that a selection stays
        entry.path->setText(path);
    }
    entry.path->setVisible(!path.isEmpty());
    for (QPushButton *const each : entry.buttons) {
        each->setVisible(!path.isEmpty());
    }
    entry.counts->setText(countsOf(watch));
    entry.counts->setVisible(!path.isEmpty());
    entry.failure->setText(tr("Last failure, %1").arg(watch.lastFailure()));
    entry.failure->setVisible(!watch.lastFailure().isEmpty());
}
