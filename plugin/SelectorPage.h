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
    QWidget *frame() const;
    ComboBox *moduleBox() const;
    ComboBox *motorBox() const;
    QTableView *table() const;

    /// The key in the module box's current entry; empty when there is none.
    QString currentModuleKey() const;

    /// The settings key under which the chosen row of the present module and motor is remembered.
    QString rememberedRowKey() const;

private:
    QWidget *m_frame = nullptr;
    ComboBox *m_moduleBox = nullptr;
    ComboBox *m_motorBox = nullptr;
    QTableView *m_table = nullptr;
};
