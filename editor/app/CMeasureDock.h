#pragma once

#include "engine/terrain/LineMeasure.h"

#include <QDockWidget>

#include <vector>

class CEditorHost;
class CGroundRuler;
class QLabel;

// What the ruler and the probe measure, in words and as a profile along the line, as the ground is
// now. Hidden until somebody measures.
class CMeasureDock : public QDockWidget
{
public:
    // Borrowed.
    CMeasureDock(QWidget* pParent, CEditorHost& host, const CGroundRuler& ruler);

    void Follow(); // nothing while it is hidden

protected:
    void showEvent(QShowEvent* pEvent) override;

private:
    QString DescribeLine(const SVec3& from, const SVec3& to, const SLineMeasure& measure) const;

    CEditorHost& m_Host;
    const CGroundRuler& m_Ruler;
    QLabel* m_pLine; // all the dock's
    QWidget* m_pProfile;
    QLabel* m_pProbe;
    std::vector<float> m_Heights; // of the profile, even steps along the line
};
