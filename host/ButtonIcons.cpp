#include "host/BasicTools.h"

#include <QAbstractButton>
#include <QIcon>
#include <QIconEngine>
#include <QPainter>

#include <utility>

namespace
{

/**
 * Shows another icon in colours of its own.
 *
 * The icon is drawn and tinted in the requested size in device pixels, so that it is as sharp as its source at every
 * pixel ratio. Owned by its QIcon.
 */
class TintedIconEngine final : public QIconEngine
{
public:
    TintedIconEngine(QIcon source, const QColor &normal, const QColor &disabled, const QColor &selected)
        : m_source(std::move(source)), m_normal(normal), m_disabled(disabled), m_selected(selected)
    {
    }

    void paint(QPainter *painter, const QRect &area, QIcon::Mode mode, QIcon::State state) override
    {
        const qreal ratio = painter->device() != nullptr ? painter->device()->devicePixelRatioF() : 1.0;
        painter->drawPixmap(area, pixmap(area.size() * ratio, mode, state));
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        if (size.isEmpty()) {
            return {};
        }
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        m_source.paint(&painter, image.rect(), Qt::AlignCenter, mode, state);
        const QColor tint = colorOf(mode);
        if (tint.isValid()) {
            painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
            painter.fillRect(image.rect(), tint);
        }
        painter.end();
        return QPixmap::fromImage(image);
    }

    QSize actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        return m_source.actualSize(size, mode, state);
    }

    QString key() const override
    {
        return QStringLiteral("TintedIconEngine");
    }

    QIconEngine *clone() const override
    {
        return new TintedIconEngine(m_source, m_normal, m_disabled, m_selected);
    }

private:
    QColor colorOf(QIcon::Mode mode) const
    {
        switch (mode) {
        case QIcon::Disabled:
            return m_disabled;
        case QIcon::Selected:
            return m_selected;
        case QIcon::Normal:
        case QIcon::Active:
            break;
        }
        return m_normal;
    }

    QIcon m_source;
    QColor m_normal;
    QColor m_disabled;
    QColor m_selected;
};

} // namespace

void BasicTools::setButtonIconsColor(QAbstractButton *button, QColor normal, QColor disabled, QColor selected)
{
    if (button == nullptr || button->icon().isNull()) {
        return;
    }
    button->setIcon(QIcon(new TintedIconEngine(button->icon(), normal, disabled, selected)));
}
