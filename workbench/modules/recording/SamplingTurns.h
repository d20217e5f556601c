#pragma once

#include <QObject>

#include <vector>

/**
 * Recognises when containers begin to sample anew, by the exchanges that they send.
 *
 * A container sends one exchange, or two, for each of its curves, without running the event loop in between. All of
 * them have to read the same row of a recording. So a turn of the event loop is one turn here, and within one an
 * exchange that comes a second time begins the next. The row goes on when a caller begins a turn that has had the
 * present row: with two containers that sample side by side, both read the same rows at the pace of one.
 *
 * GUI thread.
 */
class SamplingTurns
{
public:
    /**
     * Notes an exchange of \a caller, an address by which it is known again.
     * \return true when the row has to go on before it is answered
     */
    bool beginsNextRow(const void *caller);

private:
    QObject m_context; // for the event that ends a turn
    bool m_isTurnOpen = false;
    std::vector<const void *> m_inTurn; // compared only
    std::vector<const void *> m_ofRow;  // those who have had the present row
};
