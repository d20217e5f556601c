#pragma once

#include <QString>

#include <cstdio>

/// Prints for the person or the script that started the program: results, and what went wrong.
class Terminal
{
public:
    /// The files are not owned.
    explicit Terminal(std::FILE *output = stdout, std::FILE *errors = stderr);

    /// One line of results; it is out when this returns.
    void print(const QString &line) const;
    /// One line to the errors, behind the program's name.
    void printError(const QString &line) const;

private:
    std::FILE *const m_output;
    std::FILE *const m_errors;
};

/**
 * Has messages of Qt's logger go to the standard error from now on, but those that nobody here can act upon.
 *
 * Containers report much of what they do as plain debug lines. The message panel gets them; the terminal does only if
 * the variable QT_LOGGING_RULES asks for them.
 */
void printLoggedMessages();
