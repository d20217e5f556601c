#pragma once

#include "GuardedTest.h"

#include <functional>

/**
 * Of rows of "original", "mistake" and "expected": what is read from \a sound with the mistake in place of the original
 * has one error, in one line, that names the file ("file") and has what is expected in it.
 *
 * \param errorOf what a reader reports of a document
 */
inline void verifyMistakeIsNamed(const QString &sound, const std::function<QString(const QByteArray &)> &errorOf)
{
    QFETCH(QString, original);
    QFETCH(QString, mistake);
    QFETCH(QString, expected);
    QVERIFY(sound.contains(original));
    QCOMPARE(errorOf(sound.toUtf8()), QString());
    const QString error = errorOf(QString(sound).replace(original, mistake).toUtf8());
    QVERIFY2(error.startsWith("file:") && error.contains(expected) && !error.contains('\n'), qPrintable(error));
}
