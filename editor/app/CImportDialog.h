#pragma once

#include "editor/core/LevelExchange.h"
#include "engine/elevation/ImportPlan.h"

#include <QDialog>

#include <functional>

class CImportForm;
class CImportPicture;
class CImportSource;
class QComboBox;
class QFormLayout;
class QLabel;
class QPlainTextEdit;
class QPushButton;
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
    void ReadAgain(); // with another shape
    void Update();
    void ShowPlan(const SImportPlan& plan);
    void ShowFile();
    void DrawPlan(const SImportPlan& plan, const QStringList& corners);
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
    CImportForm* m_pForm = nullptr;
};
