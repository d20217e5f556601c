#pragma once

#include <QString>

class ComboBox;
class QTableView;
class QWidget;

/**
 * Finds the parts of a selector page from any one of them: module box, motor box and table, which are in the page's
 * layout in this order. Owns nothing.
 */
class SelectorPage
{
public:
    /// \param part one of the three widgets of a page; null and other widgets give an invalid page
    explicit SelectorPage(const QWidget *part);

    bool isValid() const;

    /// The common suffix of the parts' object names: curve index, page stack and axis, reduced to "0X" for example.
    QString suffix() const;
    /// The index of the curve, 0 to 9: the first digit of the suffix.
    int curve() const;
    bool isX() const;
    bool isY() const;

    QWidget *frame() const;
    ComboBox *moduleBox() const;
    ComboBox *motorBox() const;
    QTableView *table() const;

    /// The module key of the module box's current entry; empty without one.
    QString currentModuleKey() const;

    /// The settings key of the row that was last chosen for the current module and motor.
    QString rememberedRowKey() const;

private:
    QString m_suffix;
    QWidget *m_frame = nullptr;
    ComboBox *m_moduleBox = nullptr;
    ComboBox *m_motorBox = nullptr;
    QTableView *m_table = nullptr;
};
