#include "window/HintBar.h"

#include "host/AppSettings.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace
{

QString closedKey()
{
    return QStringLiteral("Workbench/HintClosed");
}

} // namespace

HintBar::HintBar(QWidget *parent) : QFrame(parent)
{
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);

    auto *const text = new QLabel(tr(
        "Choose a module and a motor under \"Device X\" and under \"Device Y\", and click a value in each table: the "
        "curve begins at once. The numbered boxes above the plot switch more curves on."));
    text->setWordWrap(true);
    text->setForegroundRole(QPalette::ToolTipText);
    auto *const button = new QPushButton(tr("&Got it"));
    button->setToolTip(tr("Close this hint for good"));
    connect(button, &QPushButton::clicked, this, &HintBar::closeForGood);

    auto *const layout = new QHBoxLayout(this);
    layout->addWidget(text, 1);
    layout->addWidget(button, 0, Qt::AlignVCenter);
}

bool HintBar::wasClosed()
{
    return AppSettings().value(closedKey(), false).toBool();
}

void HintBar::closeForGood()
{
    AppSettings().setValue(closedKey(), true);
    hide();
}
