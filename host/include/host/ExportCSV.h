#pragma once

#include "host/HostExport.h"

#include <QPointer>
#include <QStandardItemModel>
#include <QWidget>

class QComboBox;
class QLabel;
class QTableView;

/**
 * The host's export window: shows a table with its captions, copies it and saves it as delimited text.
 *
 * Is shown when it is constructed and deleted when it is closed. Does not own the model; when the model is deleted
 * first, the window shows an empty table. A column's caption is its horizontal header text; the module captions
 * (captionRole), if there are any, are saved as a line of their own above the column captions.
 *
 * Separator, decimal mark and folder are remembered in the settings group "ExportCSV". GUI thread.
 */
class HOST_EXPORT ExportCSV : public QWidget
{
    Q_OBJECT

public:
    /// Data role of the horizontal header under which plugins put module captions.
    static constexpr int captionRole = Qt::UserRole + 6;

    /// \a model may be null. Qt::Window is added to \a flags.
    ExportCSV(QStandardItemModel *model, QWidget *parent, Qt::WindowFlags flags);
    ~ExportCSV() override;

    /// The whole table as it is saved and copied: caption lines, then the rows, each ended by the host's line end.
    QString text() const;

private slots:
    void copy();
    void save();
    void saveTo(const QString &path);
    void rememberFormat();

private:
    void buildTable();
    /// As wide as all columns together need, within the screen.
    void fitColumns();
    QLayout *makeControls();

    QPointer<QStandardItemModel> m_model;
    QTableView *m_table = nullptr;
    QComboBox *m_separatorBox = nullptr;
    QComboBox *m_decimalMarkBox = nullptr;
    QLabel *m_outcome = nullptr; // of the last copy or save
};
