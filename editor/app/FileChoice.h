#pragma once

#include "editor/core/Words.h"
#include "host/EditorHost.h"

#include <QString>

#include <string>

class QWidget;

// What a dialog that names a file to write begins with.
struct SSaveChoice
{
    QString strTitle;
    QString strFilter;
    QString strSuffix;    // appended to a name without one; empty: nothing is
    QString strStart;     // a folder, or a file in one
    bool bConfirm = true; // false: whoever calls asks about what is replaced
};

// A filter of the plug-in ("Materials (*.mat)|*.mat"): a description followed by patterns,
// separated by '|'. Returns it as file dialogs here want it; null gives all files.
QString MakeDialogFilter(const char* pszFilter);

// The filters of dialogs for files of the formats that the engine has tables of: height maps but
// levels' own, and pictures.
QString GetHeightMapFilter();
QString GetPictureFilter(const char* pszName = Words("Pictures"));

// Answers a path below the user root or the data root as it counts from there, so that what is
// saved with it can be moved; others stay, and so does one that would then mean another file.
// bWrite: the file is going to be written, which nobody does in the data root.
std::string MakeRootRelative(const std::string& strPath, bool bWrite = false);

// Where dialogs start that name a file to write: the level's folder if files can be made there and
// it is not that of a sample, else the user's documents, else the user's home. strLevelFolder:
// empty for none.
std::string GetSaveFolder(const std::string& strLevelFolder);

// Asks for a file to write and answers its full path; empty when the person has thought better of
// it. What it would replace has been agreed to, unless the choice says otherwise.
std::string ChooseSaveFile(QWidget* pParent, const SSaveChoice& choice);

// As EditorHost::BrowseForFile. strSaveFolder: where dialogs start that may name a new file, if the
// caller has no other wish than the folder of the data.
std::string ChooseFile(QWidget* pParent,
                       EFileDialog eKind,
                       const char* pszDefaultExtension,
                       const char* pszInitialName,
                       const char* pszInitialFolder,
                       const char* pszFilter,
                       const std::string& strSaveFolder);
