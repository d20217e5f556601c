#pragma once

#include <QDialog>

/**
 * A list of all keys of a window, read from its actions: their keys, their texts and what they do. GUI thread.
 */
class ShortcutList : public QDialog
{
    Q_OBJECT

public:
    /// \param window whose actions, and those of everything in it, are listed; becomes the parent
    explicit ShortcutList(QWidget *window);
};
