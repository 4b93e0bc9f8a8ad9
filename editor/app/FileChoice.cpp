#include "editor/app/FileChoice.h"

#include "host/FileSystem.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QStringList>

namespace
{

constexpr int KIND_OPEN = 1;

// Where the dialog starts: the file when it is known, else the folder.
QString GetStart(const char* pszInitialName, const char* pszInitialFolder)
{
    if (pszInitialName != nullptr && *pszInitialName != '\0')
    {
        QString strFile = QString::fromStdString(fs::root_path(pszInitialName));
        if (QFileInfo(strFile).dir().exists())
        {
            return strFile;
        }
    }
    const char* pszFolder = pszInitialFolder != nullptr ? pszInitialFolder : "";
    return QString::fromStdString(fs::root_path(pszFolder));
}

} // namespace

QString MakeDialogFilter(const char* pszFilter)
{
    const QStringList parts = QString::fromUtf8(pszFilter).split('|', Qt::SkipEmptyParts);
    if (parts.size() < 2)
    {
        return "All files (*)";
    }
    // The description repeats the patterns in brackets; what counts are the patterns themselves.
    const QString strName = parts.front().section('(', 0, 0).trimmed();
    const QString strPatterns = QStringList(parts.mid(1)).join(' ');
    return QString("%1 (%2);;All files (*)").arg(strName, strPatterns);
}

std::string MakeRootRelative(const std::string& strPath)
{
    for (const std::string& strRoot : {fs::get_user_root(), fs::get_data_root()})
    {
        if (!strRoot.empty() && strPath.starts_with(strRoot + "/"))
        {
            return strPath.substr(strRoot.size() + 1);
        }
    }
    return strPath;
}

std::string ChooseFile(QWidget* pParent,
                       int iKind,
                       const char* pszDefaultExtension,
                       const char* pszInitialName,
                       const char* pszInitialFolder,
                       const char* pszFilter)
{
    QFileDialog dialog(pParent, QString(), QString(), MakeDialogFilter(pszFilter));
    const QFileInfo start(GetStart(pszInitialName, pszInitialFolder));
    dialog.setDirectory(start.isDir() ? start.filePath() : start.dir().path());
    if (!start.isDir())
    {
        dialog.selectFile(start.fileName());
    }
    const bool bExtension = pszDefaultExtension != nullptr && *pszDefaultExtension != '\0';
    if (iKind == KIND_OPEN)
    {
        dialog.setFileMode(QFileDialog::ExistingFile);
    }
    else
    {
        dialog.setAcceptMode(bExtension ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
        dialog.setFileMode(QFileDialog::AnyFile);
    }
    if (bExtension)
    {
        dialog.setDefaultSuffix(QString::fromUtf8(pszDefaultExtension));
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
    {
        return {};
    }
    return MakeRootRelative(dialog.selectedFiles().front().toStdString());
}
