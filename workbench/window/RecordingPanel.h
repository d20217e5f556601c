#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
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
        QLabel *counts = nullptr;
        QLabel *failure = nullptr;
    };

    void add(RecordingWatch *watch);
    static void show(const RecordingWatch &watch, const Entry &entry);

    QVBoxLayout *m_layout = nullptr;
    QLabel *m_hint = nullptr; // while there is no container
};
