#pragma once

#include <QList>
#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;
class QVBoxLayout;
class RecordingWatch;
class Recordings;

/**
 * Shows for each container whether it is recording, into which file, how much has arrived, and what went wrong.
 *
 * The recordings are not owned and have to outlive the panel. GUI thread.
 */
class RecordingPanel : public QWidget
{
    Q_OBJECT

public:
    explicit RecordingPanel(Recordings *recordings, QWidget *parent = nullptr);

private:
    /// The labels of one container.
    struct Entry
    {
        QLabel *symbol = nullptr;
        QLabel *headline = nullptr;
        QLineEdit *path = nullptr;
        QList<QPushButton *> buttons; // that open it
        QLabel *counts = nullptr;
        QLabel *failure = nullptr;
    };

    void add(RecordingWatch *watch);
    static void show(const RecordingWatch &watch, const Entry &entry);

    QVBoxLayout *m_layout = nullptr;
    QLabel *m_hint = nullptr; // while there is no container
};
