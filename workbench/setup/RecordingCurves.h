#pragma once

#include "modules/recording/RecordedColumn.h"
#include "setup/Scene.h"

#include <QList>
#include <QStringList>
#include <QVector>

/**
 * The curves that show a recording, up to the number of a plot window.
 *
 * Those of a log as they were logged; of other files the first column is X of all curves, and each of the next ones is Y
 * of one. A file of a single column is shown over its time.
 * \param key of the recorded module, by itself and not beside another
 */
QList<SceneCurve> recordingCurves(const QVector<RecordedColumn> &columns, const QString &key);

/// A key for the module of the file at \a path that is not among \a taken, for example "REC0/run".
QString recordingKey(const QString &path, const QStringList &taken);
