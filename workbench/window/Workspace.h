#pragma once

#include <QMdiArea>

/**
 * The area for the windows of containers, which says what to do while it is empty.
 *
 * Tiles so that every window can be used: side by side only as far as the width allows it, and no lower than what
 * is in it needs; the rest is reached by scrolling. GUI thread.
 */
class Workspace : public QMdiArea
{
    Q_OBJECT

public:
    explicit Workspace(QWidget *parent = nullptr);

    /// \param text shown while there is no window
    void setEmptyText(const QString &text);

public slots:
    void tile();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_emptyText;
};
