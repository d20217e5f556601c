#include "window/NoticeBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QToolButton>

namespace
{

/// What a notice is about; behind it a number may grow.
QString subjectOf(const QString &notice)
{
    return notice.section(QStringLiteral(": "), 0, 0);
}

} // namespace

NoticeBar::NoticeBar(QWidget *parent) : QFrame(parent), m_symbol(new QLabel), m_text(new QLabel)
{
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    setAccessibleName(tr("Notices"));
    setWhatsThis(tr("What is wrong with the values of this window right now, or why its recording ended. The same "
                    "stands in Messages."));

    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize);
    m_symbol->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(side, side));
    m_text->setWordWrap(true);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setForegroundRole(QPalette::ToolTipText);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto *const button = new QToolButton;
    button->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setAccessibleName(tr("Close these notices"));
    button->setToolTip(tr("Close these notices until there are others"));
    connect(button, &QToolButton::clicked, this, &NoticeBar::closeAll);

    constexpr int marginWidth = 4; // widget pixels
    auto *const layout = new QHBoxLayout(this);
    layout->setContentsMargins(marginWidth, 1, 1, 1);
    layout->addWidget(m_symbol, 0, Qt::AlignTop);
    layout->addWidget(m_text, 1);
    layout->addWidget(button, 0, Qt::AlignTop);
    hide();
}

void NoticeBar::setNotices(const QStringList &notices)
{
    if (notices == m_notices) {
        return;
    }
    m_notices = notices;
    QStringList subjects;
    for (const QString &notice : notices) {
        subjects.append(subjectOf(notice));
    }
    for (int index = m_closed.size() - 1; index >= 0; --index) {
        if (!subjects.contains(m_closed.at(index))) {
            m_closed.removeAt(index);
        }
    }
    showRest();
}

void NoticeBar::closeAll()
{
    for (const QString &notice : qAsConst(m_notices)) {
        m_closed.append(subjectOf(notice));
    }
    showRest();
}

void NoticeBar::showRest()
{
    QStringList shown;
    for (const QString &notice : qAsConst(m_notices)) {
        if (!m_closed.contains(subjectOf(notice))) {
            shown.append(notice);
        }
    }
    m_text->setText(shown.join(QLatin1Char('\n')));
    fitText();
    setVisible(!shown.isEmpty());
}

bool NoticeBar::hasHeightForWidth() const
{
    return false;
}

void NoticeBar::resizeEvent(QResizeEvent *event)
{
    QFrame::resizeEvent(event);
    fitText();
}

void NoticeBar::fitText()
{
    setFixedHeight(layout()->heightForWidth(width()) + 2 * frameWidth());
}
