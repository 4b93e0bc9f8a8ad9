#pragma once

#include "editor/app/CEditor.h"
#include "editor/app/CEditorFace.h"
#include "editor/app/CEditorWindow.h"
#include "editor/app/CViewArea.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "tests/support/CTempFolder.h"

#include <QAbstractButton>
#include <QImage>
#include <QStringList>

#include <functional>
#include <memory>

// The editor in its window on an X server, worked with events of the server: xdotool moves the
// mouse and presses the keys. The user's folders are temporary.
class CEditorFixture : public testing::Test
{
protected:
    CEditorFixture();
    ~CEditorFixture() override;

    // Starts the editor with its plug-in and shows the window. A flat level of 32 x 32 cells, 320 x
    // 320 units, 100 high, all heights 20, unless bLevel is false.
    void Start(bool bLevel = true);
    void Stop(); // as the program ends

    // A brush of 40 units whose strokes add to the heights; terraforming is on. strMore: keywords
    // that follow in its block. pszShape: one of those that come along.
    void TakeBrush(const char* pszFunction = "RelativeHeightFunction",
                   const char* pszField = "m_Height",
                   const char* pszValue = "5",
                   const std::string& strMore = "",
                   const char* pszShape = "round");

    // Runs xdotool; returns when the server has its events and the program has answered them.
    void Do(const QStringList& arguments);

    void Key(const char* pszKeys) { Do({"key", pszKeys}); }

    void MoveTo(const QPoint& screen);
    void MoveTo(QWidget& widget, const QPointF& share); // of its size
    void Click(QWidget& widget, const char* pszButton = "1");
    void Drag(QWidget& view, const QPointF& from, const QPointF& to, int nSteps = 12);

    // Answers events until the condition holds; false, and a failure, when it does not within the
    // limit of the test.
    bool WaitFor(const std::function<bool()>& holds, const char* pszWhat);
    void Settle(); // until nothing is waiting any longer

    // Runs work, which opens a dialog, and calls answer once that is shown.
    template <typename TDialog>
    void Answer(const std::function<void()>& work, const std::function<void(TDialog&)>& answer)
    {
        AnswerAny(work,
                  [&answer](QWidget* pShown)
                  {
                      auto* pDialog = dynamic_cast<TDialog*>(pShown);
                      if (pDialog != nullptr)
                      {
                          answer(*pDialog);
                      }
                      return pDialog != nullptr;
                  });
    }

    void AnswerAny(const std::function<void()>& work, const std::function<bool(QWidget*)>& answer);

    CViewWidget& GetView(size_t i = 0) { return *m_Window->GetViews().GetViews()[i]; }

    CEditorHost& GetHost() { return m_Editor->GetHost(); }

    const CTerrain* GetTerrain() { return GetHost().GetEngine().GetCWorld().GetCTerrain(); }

    std::vector<float> GetHeights();
    void Trigger(const char* pszCommand); // of the window's commands
    QImage Grab(const QWidget& widget);   // as the screen shows it now
    void SavePicture(const char* pszName);

    // Whether the tools are as a person finds them; else as the plug-in makes them, with an empty
    // list.
    bool m_bTools = false;
    bool m_bWelcome = false; // whether who is new here is shown how to begin
    CTempFolder m_Folder;
    std::unique_ptr<CEditorFace> m_Face;
    std::unique_ptr<CEditor> m_Editor;
    std::unique_ptr<CEditorWindow> m_Window;
};

// What tellur-replay makes of a script: the bytes of its ".height" file; empty after a failure.
std::string ReplayScript(const std::string& strScript, const std::string& strOut);
