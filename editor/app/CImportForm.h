#pragma once

#include "editor/core/LevelExchange.h"

#include <QWidget>

#include <functional>

class CImportSource;
struct SExportNotes;
class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QFormLayout;
class QSpinBox;

// The choices of an import: how a file lies in the level, how large it is and how high. Values of 0
// leave the choice to the file. Owned by its dialog.
class CImportForm : public QWidget
{
public:
    // source: borrowed for the call. bLevel: a level is open that may take the heights. onChange: a
    // choice is another one. onShape: a raw file is to be read with another shape.
    CImportForm(QWidget* pParent,
                const CImportSource& source,
                bool bLevel,
                std::function<void()> onChange,
                std::function<void()> onShape);

    SImportOptions GetOptions() const;
    EImportAs GetTarget() const;

private:
    void AddOrientation(QFormLayout& form);
    void AddSizes(QFormLayout& form, const CImportSource& source);
    void AddHeights(QFormLayout& form, const CImportSource& source);
    void AddShape(QFormLayout& form); // of a raw file
    void AddTarget(QFormLayout& form, bool bLevel);
    void FillIn(const SExportNotes& notes);
    void AddPair(QFormLayout& form,
                 const char* pszLabel,
                 const char* pszAuto,
                 const char* pszName,
                 QDoubleSpinBox*& pX,
                 QDoubleSpinBox*& pZ);
    QDoubleSpinBox* AddNumber(const char* pszAuto, const char* pszName);
    QSpinBox* AddCount(QFormLayout& form, const char* pszLabel, const char* pszName);
    // A number in one of them puts the other back to what it is without.
    static void MakeRivals(QDoubleSpinBox* pFirst, QDoubleSpinBox* pSecond);

    std::function<void()> m_OnChange;
    std::function<void()> m_OnShape;
    QComboBox* m_pTurn = nullptr; // all the form's
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
