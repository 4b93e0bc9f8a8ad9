#pragma once

#include "engine/terrain/GroundChange.h"

#include <QDialog>

#include <vector>

class CGroundPage;
class CTerrain;
class QLabel;
class QPushButton;
class QTabWidget;

// Level > Properties: what the level measures and is like, and acts on its ground as a whole, one
// of each page. What is asked for on all pages together, also on those that are not open, is said
// at once and marked at their tabs; what the level cannot take cannot be chosen. Changes nothing
// itself.
class CPropertiesDialog : public QDialog
{
public:
    // terrain: borrowed, as it stays while the dialog is open. bBitmap: the level names a bitmap.
    CPropertiesDialog(QWidget* pParent, const CTerrain& terrain, bool bBitmap);

    // What was asked for, in the order of the pages, which is that in which it was judged. After it
    // was accepted.
    std::vector<SGroundAct> GetActs() const;

private:
    void AddPage(CGroundPage* pPage, const char* pszTitle);
    void Follow();
    const char* FindFault(size_t& nPage) const;
    QString GetOutcome() const;

    const CTerrain& m_Terrain;
    bool m_bBitmap;
    QTabWidget* m_pTabs; // all the dialog's
    QLabel* m_pOutcome;
    QPushButton* m_pApply = nullptr;
    std::vector<CGroundPage*> m_Pages; // by the place of their tab
    std::vector<QString> m_Titles;     // of them
};
