#pragma once

#include <QString>
#include <QStringList>

class QWidget;

// Which heading of the user guide tells about what.

// Of the part of the window, or of the dialog, that a widget stands in; that of the editor as a
// whole where there is no other. pWidget: borrowed for the call, may be null.
QString FindGuidePage(const QWidget* pWidget);

QStringList GetGuidePages(); // all that FindGuidePage may answer

// As links name a heading: "The tool panel" is "the-tool-panel".
QString MakeAnchor(const QString& strHeading);
