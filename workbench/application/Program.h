#pragma once

/**
 * The whole program: reads the command line, then prints a list or plans and carries out a run.
 *
 * To be called once, as the body of main(); makes the application object.
 * \return the program's exit code: 0, 1 when something failed, 2 for a command line that makes no sense, 128 + its
 *         number when a signal ended it
 */
int runProgram(int argc, char **argv);
