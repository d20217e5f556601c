#pragma once

#include <QString>

class ComboBox;
class QTableView;
class QWidget;

/**
 * A selector page as its parts are found from one of them: module box, motor box and table, in this order, in the
 * page's layout. Owns nothing.
 */
class SelectorPage
{
public:
    /// \param part one of the three widgets of a page; anything else, null too, gives a page that is not valid
    explicit SelectorPage(const QWidget *part);

    bool isValid() const;

    /// What the names of the page's parts have in common: curve index and axis, for example "0X".
    QString suffix() const;
    /// The curve's index as the suffix gives it, in one digit: there may be ten curves.
    int curve() const;
    bool isX() const;
    bool isY() const;

    QWidget *frame() const;
    ComboBox *moduleBox() const;
    ComboBox *motorBox() const;
    QTableView *table() const;

    /// The key in the module box's current entry; empty when there is none.
    QString currentModuleKey() const;

    /// The settings key under which the chosen row of the present module and motor is remembered.
    QString rememberedRowKey() const;

private:
    QString m_suffix;
    QWidget *m_frame = nullptr;
    ComboBox *m_moduleBox = nullptr;
    ComboBox *m_motorBox = nullptr;
    QTableView *m_table = nullptr;
};
