#pragma once

#include "editor/core/LevelExchange.h"
#include "engine/elevation/SImportOptions.h"

#include <QDialog>

class QComboBox;
class QDoubleSpinBox;
class QFormLayout;
class QSpinBox;

// Asks how the samples of a height map of another format become heights. Values of 0 leave the
// choice to the file.
class CImportDialog : public QDialog
{
public:
    // bRaw: the file says nothing about itself, so its measures are asked, too. bLevel: a level is
    // open that may take the heights.
    CImportDialog(QWidget* pParent, const QString& strFile, bool bRaw, bool bLevel);

    SImportOptions GetOptions() const;
    EImportAs GetTarget() const;

private:
    QDoubleSpinBox* AddNumber(QFormLayout& form, const char* pszLabel, const char* pszFromFile);
    QSpinBox* AddCount(QFormLayout& form, const char* pszLabel);

    QComboBox* m_pVertices; // all the dialog's
    QComboBox* m_pTarget;
    QDoubleSpinBox* m_pWidth;
    QDoubleSpinBox* m_pHighest;
    QDoubleSpinBox* m_pWhite;
    QDoubleSpinBox* m_pUnit;
    QSpinBox* m_pColumns = nullptr; // null for files that say it themselves
    QSpinBox* m_pRows = nullptr;
    QComboBox* m_pOrder = nullptr;
};
