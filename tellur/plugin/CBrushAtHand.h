#pragma once

#include "tellur/brushes/CBrushContainer.h"

#include <memory>
#include <string>

class CPanelLink;

// The brush that is current, what a script or a stroke that smooths put in its place, and which
// tool comes back. Brushes of the containers are borrowed, others are owned here.
class CBrushAtHand
{
public:
    CBrushAtHand(CBrushContainer& brushes, CPanelLink& panel); // borrowed
    ~CBrushAtHand();
    CBrushAtHand(const CBrushAtHand&) = delete;
    CBrushAtHand& operator=(const CBrushAtHand&) = delete;

    CTellurBrush* Get() const { return m_pCurrentBrush; } // null when none

    // The same, but for strokes that smooth: then the one that comes back after them.
    CTellurBrush* GetTool() const;

    // Borrowed until replaced; null for none. The preview, the overlay of the terrain and the panel
    // follow.
    void Set(CTellurBrush* pBrush);

    // Makes no brush current without telling panel or overlay.
    void Forget() { m_pCurrentBrush = nullptr; }

    // Makes a script's brush current and owns it until the next one arrives and no drag runs.
    void TakeOver(std::unique_ptr<CTellurBrush> pBrush);
    // Lets a clone replace the tool brush of its function and makes that current.
    void UseCloneOf(const CTellurBrush& brush);
    // Puts the brush in the place of the tool brush of its function; current becomes it only where
    // that one is. False, after a logged line, when there is none.
    bool ReplaceTool(std::unique_ptr<CTellurBrush> pBrush);

    // The tool that was put away last, its function's tool brush when it is gone, or what a
    // designer starts with. Null only without tools.
    CTellurBrush* FindLastTool() const;

    // For the strokes to come: makes a brush current that has the blur function and the size and
    // mask of the current one. False without a brush, while terraforming is off and while a drag
    // runs.
    bool BeginSmoothing();
    // The tool brush that it takes the rest from; null only without tools.
    const CTellurBrush* FindSmoothing() const;
    // Gives the tool of before back, unless another brush was chosen meanwhile.
    void EndSmoothing();

    void Clear(); // what is owned goes; nobody is told

private:
    bool Has(const CTellurBrush* pBrush) const; // it is there still
    void NoteTool();                            // the current one, before another one or none is

    CBrushContainer& m_Brushes;
    CPanelLink& m_Panel;
    CTellurBrush* m_pCurrentBrush = nullptr;
    CBrushContainer::CBrushList m_KeptBrushes; // the script's last, and what a drag still uses
    CTellurBrush* m_pLastTool = nullptr;       // that was put away; may be gone
    std::string m_LastFunction;                // of it
    std::unique_ptr<CTellurBrush> m_pSmoother; // the brush of strokes that smooth
    CTellurBrush* m_pSmoothed = nullptr;       // current before one; null outside; may be gone
};
