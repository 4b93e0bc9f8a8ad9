#pragma once

#include <QLabel>
#include <QTimer>
#include <QWidget>

// What a dialog that chooses a picture shows beside its list of files: the picture itself, read by
// the image library so that every format shows that a brush can have, and its size, or why there is
// none. Owned by its dialog.
class CPicturePreview : public QWidget
{
public:
    explicit CPicturePreview(QWidget* pParent);

    // Shows the file once the person stays with it for a moment, so that going down a list costs
    // nothing. Full path; a folder, or empty, shows nothing.
    void Show(const QString& strPath);

private:
    void Load();

    QLabel* m_pPicture; // these are the preview's
    QLabel* m_pText;
    QTimer m_Timer;
    QString m_Path;
};
