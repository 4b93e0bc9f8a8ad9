#pragma once

#include <QDialog>
#include <QStringList>

class QLabel;
class QLineEdit;
class QListWidget;
class QTextBrowser;

// The user guide in a window of its own: its headings at the left, a search above. It is a child of
// the window or of the dialog that it was asked for in, which may be modal, and goes with it. UI
// thread.
class CGuideWindow : public QDialog
{
public:
    explicit CGuideWindow(QWidget* pParent);

    void ShowGuide(const QString& strAnchor); // a heading of the guide, see MakeAnchor
    void ShowPage(const QString& strAnchor);  // one of the document that is shown
    void FocusSearch();

    // The heading that was gone to last, as an anchor.
    const QString& GetPage() const { return m_Page; }

    QStringList GetAnchors() const { return m_Anchors; } // of all headings

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override; // the search field

private:
    bool Load(const QString& strDocument);
    void FollowLink(const QUrl& link);
    void Find(bool bBack);
    void MarkFound();

    QTextBrowser* m_pText; // all the window's
    QListWidget* m_pHeadings;
    QLineEdit* m_pSearch;
    QLabel* m_pFound;
    QString m_Document; // the one that is shown, a name without a folder
    QString m_Page;
    QStringList m_Anchors;
    QList<int> m_Blocks; // of the headings, in the text
};
