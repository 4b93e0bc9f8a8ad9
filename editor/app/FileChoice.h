#pragma once

#include <QString>

#include <string>

class QWidget;

// A filter of the plug-in ("Materials (*.mat)|*.mat"): a description followed by patterns,
// separated by '|'. Returns it as file dialogs here want it; null gives all files.
QString MakeDialogFilter(const char* pszFilter);

// A path below the user root or the data root as it counts from there, so that what is saved with
// it can be moved; others stay.
std::string MakeRootRelative(const std::string& strPath);

// As EditorHost::BrowseForFile.
std::string ChooseFile(QWidget* pParent,
                       int iKind,
                       const char* pszDefaultExtension,
                       const char* pszInitialName,
                       const char* pszInitialFolder,
                       const char* pszFilter);
