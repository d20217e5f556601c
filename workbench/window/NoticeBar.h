#pragma once

#include <QFrame>
#include <QStringList>

class QLabel;

/**
 * A bar with what a person must not miss, a line for each notice; hidden while there is none.
 *
 * A notice that was closed by its button stays away until it has been gone once, or is about something else. GUI thread.
 */
class NoticeBar : public QFrame
{
    Q_OBJECT

public:
    explicit NoticeBar(QWidget *parent = nullptr);

    void setNotices(const QStringList &notices);

    /// False, or the layout around the bar would be stretched. The bar sets its height to what its text needs.
    bool hasHeightForWidth() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void closeAll();
    void showRest();
    void fitText();

    QLabel *const m_symbol;
    QLabel *const m_text;
    QStringList m_notices;
    QStringList m_closed; // what they were about
};
