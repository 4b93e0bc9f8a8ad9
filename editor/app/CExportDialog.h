#pragma once

#include "engine/elevation/SExportForm.h"

#include <QDialog>

#include <string>
#include <vector>

class QComboBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QSpinBox;
class QTreeWidget;

// Shows what each target of the table would write of the level, and what to type in the other
// program for the one that is chosen. Nothing is written here.
class CExportDialog : public QDialog
{
public:
    // targets: borrowed.
    CExportDialog(QWidget* pParent,
                  const SGroundFacts& facts,
                  const std::vector<SExportTarget>& targets);

    // Null for the last row: a format that the name of the file says.
    const SExportTarget* GetTarget() const;
    uint32_t GetTiles() const; // a side

    ELevelUnit GetUnit() const { return m_Facts.eUnit; }

    void accept() override; // not for what cannot be written

private:
    void AddRows();
    QWidget* MakeTiles();
    QWidget* MakeNumbers();
    void FillRows(); // what the tiles change
    void ShowTarget();

    SGroundFacts m_Facts;
    const std::vector<SExportTarget>& m_Targets;
    bool m_bPossible = true;
    QTreeWidget* m_pRows = nullptr; // all the dialog's
    QSpinBox* m_pTiles = nullptr;
    QComboBox* m_pUnit = nullptr;
    QLabel* m_pUse = nullptr;
    QPlainTextEdit* m_pNumbers = nullptr;
    QPushButton* m_pCopy = nullptr;
    QPushButton* m_pOk = nullptr;
};
