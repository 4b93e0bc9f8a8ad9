#pragma once

#include "editor/core/LevelExchange.h"
#include "engine/elevation/ImportPlan.h"

#include <QDialog>

#include <functional>

class CImportPicture;
class CImportSource;
class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QFormLayout;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QSpinBox;
struct SImportWord;

// Shows what a height map of another format is and the level that it becomes, and asks how. Every
// choice changes picture and words at once, and the level is then exactly that. Values of 0 leave
// the choice to the file.
class CImportDialog : public QDialog
{
public:
    // source: borrowed, mostly read already; a raw file is read again when its shape is another.
    // bLevel: a level is open that may take the heights. lastFault: why a reading failed.
    CImportDialog(QWidget* pParent,
                  CImportSource& source,
                  bool bLevel,
                  std::function<QString()> lastFault);

    SImportOptions GetOptions() const;
    EImportAs GetTarget() const;

    // Whether the choices make a level; else why not stands in the dialog.
    bool IsPossible() const { return m_bPossible; }

    void accept() override; // not while they make none

private:
    QWidget* MakeFileSide();
    QWidget* MakeLevelSide(bool bLevel);
    void AddOrientation(QFormLayout& form);
    void AddSizes(QFormLayout& form);
    void AddHeights(QFormLayout& form);
    void AddShape(QFormLayout& form); // of a raw file
    void AddPair(QFormLayout& form,
                 const char* pszLabel,
                 const char* pszAuto,
                 const char* pszName,
                 QDoubleSpinBox*& pX,
                 QDoubleSpinBox*& pZ);
    QDoubleSpinBox* AddNumber(const char* pszAuto, const char* pszName);
    QSpinBox* AddCount(QFormLayout& form, const char* pszLabel, const char* pszName);
    // A number in one of them puts the other back to what it is without.
    void MakeRivals(QDoubleSpinBox* pFirst, QDoubleSpinBox* pSecond);
    void ReadAgain(); // with another shape
    void Update();
    void ShowPlan(const SImportPlan& plan);
    void ShowWords(const QList<SImportWord>& words, QFormLayout& form);
    void ShowFault(const QString& strFault); // empty: there is none

    CImportSource& m_Source;
    std::function<QString()> m_LastFault;
    bool m_bPossible = false;
    CImportPicture* m_pPicture = nullptr; // all the dialog's
    QComboBox* m_pLook = nullptr;
    QFormLayout* m_pFileWords = nullptr;
    QFormLayout* m_pLevelWords = nullptr;
    QPlainTextEdit* m_pAssumed = nullptr;
    QLabel* m_pFault = nullptr;
    QPushButton* m_pOk = nullptr;
    QComboBox* m_pTurn = nullptr;
    QCheckBox* m_pFlipX = nullptr;
    QCheckBox* m_pFlipZ = nullptr;
    QComboBox* m_pVertices = nullptr;
    QComboBox* m_pTarget = nullptr;
    QDoubleSpinBox* m_pWidth = nullptr;
    QDoubleSpinBox* m_pDepth = nullptr;
    QDoubleSpinBox* m_pSpacingX = nullptr;
    QDoubleSpinBox* m_pSpacingZ = nullptr;
    QDoubleSpinBox* m_pLatitude = nullptr; // null for files that say it, or have no use for it
    QDoubleSpinBox* m_pHighest = nullptr;
    QDoubleSpinBox* m_pWhite = nullptr; // null for files that have no white
    QDoubleSpinBox* m_pUnit = nullptr;
    QDoubleSpinBox* m_pBase = nullptr;
    QSpinBox* m_pColumns = nullptr; // null for files that say it themselves
    QSpinBox* m_pRows = nullptr;
    QComboBox* m_pOrder = nullptr;
};
