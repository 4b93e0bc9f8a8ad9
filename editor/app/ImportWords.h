#pragma once

#include "engine/elevation/ImportPlan.h"

#include <QString>
#include <QStringList>

class CImportSource;

// What a dialog says of a height map and of the level that it becomes, in the order in which it
// shows it. UI thread.

// One of the things that are said: what it is, and the words for it.
struct SImportWord
{
    const char* pszName = nullptr; // also of the row, for those who look for it
    const char* pszLabel = nullptr;
    QString strText;
};

// Of the file as it was read.
QList<SImportWord> DescribeFile(const CImportSource& source);
// Of the level that a plan makes of it.
QList<SImportWord> DescribeLevel(const CImportSource& source, const SImportPlan& plan);

// What was assumed, and what may disappoint, one line each.
QStringList ListAssumptions(const CImportSource& source, const SImportPlan& plan);

// What lies at the corners of the level, as CImportPicture shows it.
QStringList DescribeCorners(const CImportSource& source,
                            const SOrientation& orientation,
                            const SImportPlan& plan);
