#pragma once

#include <QStatusBar>
#include <QTimer>

#include <map>
#include <string>

class CEditorHost;
class CViewWidget;
class IPluginTools;
class QLabel;

// What is under the cursor and what the tool is set to, and beside or, in a narrow window, below it
// a line of words: it covers none of the fields that are always needed, and its room depends on
// nothing but the width, so no word moves the views. Owned by the window.
class CStatusLine : public QStatusBar
{
public:
    explicit CStatusLine(QWidget* pParent);

    // Brings all fields up to date. pView: the one the cursor is in, borrowed for the call; null:
    // no position. pTools: null for a plug-in without.
    void Follow(CEditorHost& host, CViewWidget* pView, IPluginTools* pTools);

    void SetRecording(bool bOn);
    void ShowStroke(const QString& strText); // what strokes do beside what the tool says

    // Shows one line for three seconds; in a wide window over the fields at the end: none of them
    // moves.
    void Say(const QString& strText);
    // Takes the line away, or puts another one in its place for the rest of its time, if it is
    // still that one.
    void Withdraw(const QString& strText);
    void Replace(const QString& strText, const QString& strBy);
    // Shows a line in the same place whenever no other is there, until the topic has an empty one.
    void Stand(const std::string& strTopic, const QString& strText);

protected:
    void resizeEvent(QResizeEvent* pEvent) override;

private:
    int GetNeededWidth() const; // of the fields that words never cover
    void ChooseRows();
    void FitFields();
    void PlaceWords();
    void ShowWords(const QString& strText);
    void EndWords();
    QLabel* AddField(const char* pszName, const QString& strWidest);

    QLabel* m_pMode; // all the bar's
    QLabel* m_pBrush;
    QLabel* m_pRecord;
    QLabel* m_pPosition;
    QLabel* m_pVertex;
    QLabel* m_pSlope;
    QLabel* m_pFrame;
    QLabel* m_pStroke;
    QLabel* m_pWords;        // in no layout
    bool m_bTwoRows = false; // the words have the lower one
    QString m_Words;
    QTimer m_WordsTimer;                       // runs while they are shown for their time
    std::map<std::string, QString> m_Standing; // by topic
};
