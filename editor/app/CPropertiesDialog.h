#pragma once

#include "engine/terrain/GroundChange.h"

#include <QDialog>

#include <vector>

class CGroundPage;
class CTerrain;
class QLabel;
class QPushButton;
class QTabWidget;

// Level > Properties: what the level measures and is like, and one act on its ground as a whole.
// The act is that of the page that is open; what it leads to is said at once, and one that the
// level cannot take cannot be chosen. Changes nothing itself.
class CPropertiesDialog : public QDialog
{
public:
    // terrain: borrowed, as it stays while the dialog is open. bBitmap: the level names a bitmap.
    CPropertiesDialog(QWidget* pParent, const CTerrain& terrain, bool bBitmap);

    // What was asked for; false for nothing. After it was accepted.
    bool GetAct(SGroundAct& act) const;

private:
    void AddPage(CGroundPage* pPage, const char* pszTitle);
    void Follow();
    QString GetOutcome(const SGroundAct& act) const;

    const CTerrain& m_Terrain;
    bool m_bBitmap;
    QTabWidget* m_pTabs; // all the dialog's
    QLabel* m_pOutcome;
    QPushButton* m_pApply = nullptr;
    std::vector<CGroundPage*> m_Pages; // by the place of their tab
};
