#pragma once

#include "window/ModuleRow.h"

#include <QTimer>

class QComboBox;
class QPushButton;
class QSlider;
class QToolButton;
class RecordedModule;
struct RecordingSettings;

/**
 * The row of a recording: plays and pauses it, sets speed and position, and shows where it is.
 *
 * Follows the recording four times a second while it is visible.
 */
class PlaybackRow : public ModuleRow
{
    Q_OBJECT

public:
    PlaybackRow(ModuleRack *rack, const AnswerWatch *watch, int index, const RecordingSettings &settings);

    void refresh() override;

    /// Leaves the wheel to the panel, which it scrolls, unless the slider or box below has the focus.
    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    QString trouble() const override;

private:
    QToolButton *makeArrow(Qt::ArrowType arrow, const QString &text, int rows);
    void makeSpeedBox();
    void makeBesideBox();
    void fillBesideBox();
    void makeSlider();
    void addControls();

    RecordedModule *module() const; ///< Null while it is taken out.
    void change(int speedTenths, bool isRepeated, bool isPlaying);
    void setRow(int row);
    void setBeside();
    void showFile(const RecordedModule &module);
    void showPosition();

    QPushButton *m_play = nullptr;
    QToolButton *m_back = nullptr;
    QToolButton *m_on = nullptr;
    QPushButton *m_close = nullptr;
    QComboBox *m_speed = nullptr;
    QCheckBox *m_repeat = nullptr;
    QComboBox *m_beside = nullptr;
    QSlider *m_slider = nullptr;
    QLabel *m_position = nullptr;
    QLabel *m_notes = nullptr;
    QTimer m_timer;
};
