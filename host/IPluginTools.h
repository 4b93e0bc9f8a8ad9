#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The tool at hand, and what the keys of an editor do to it. See IPlugin.h for how a host gets it.
// The host calls it on the UI thread.
//
// What is at hand can be asked at any time, also during a drag and from within a call of the
// plug-in's. What changes it is not called during a drag, whose brush stays as it was at the press;
// it goes the way of the panel: an open panel and the views follow, TakeTool switches modes as
// ModeManager::ActivateMode does, and ChooseMask waits for the person.

// A number of the brush at hand that a key can change.
enum class EBrushValue : uint32_t
{
    Extent, // side of the footprint, terrain units; also of what is painted
    Power,
    Hardness,
    Amount, // of its function: the height that is added or set, or a whole number: the levels, the
            // half width of what is averaged
};

// A tool that the plug-in offers.
struct SToolOffer
{
    const char* pszFunction = ""; // class name, as TakeTool has it; static
    const char* pszText = "";     // as a menu shows it, '&' before the letter that chooses; static
};

// What of a tool's brush depends on the level that it works on.
struct SToolSizes
{
    float fExtent = 0.0F;      // side of the footprint, terrain units
    float fAmount = 0.0F;      // as EBrushValue::Amount; no number where the function has none
    bool bPicksHeight = false; // the height where a stroke begins counts instead of the amount
};

class IPluginTools
{
public:
    virtual ~IPluginTools() = default;

    // All of them, in the order in which they are shown. The same from the load of the library on.
    virtual std::vector<SToolOffer> GetTools() = 0;

    // What is at hand.
    virtual bool IsTerraforming() = 0; // true: the mode that sculpts is current
    virtual bool IsPainting() = 0;     // true: the mode that paints is current and has a bitmap
    // Class name of the current brush's function, or the name of the one that paints; empty without
    // one.
    virtual std::string GetFunctionName() = 0;
    virtual std::string GetToolName() = 0; // the same as a person reads it: "Set height"
    // Side of the footprint of the current brush, or of what is painted; terrain units, 0 without
    // one.
    virtual float GetBrushExtent() = 0;
    // Whether a mask keeps the current brush off parts of the ground: it has one, switched on.
    virtual bool IsMaskActing() = 0;
    // Whether the current brush's function looks at Ctrl (only raise) and Alt (only lower).
    virtual bool HeedsMinMax() = 0;

    // What keys do to it. None of these logs a refusal.
    //
    // The tool brush of a function, by class name, becomes current and the mode that sculpts is
    // switched on; a tool that is up stays. Null: the one that was up last, at first the one that
    // raises. False when there is none, or when the mode that is current stays.
    virtual bool TakeTool(const char* pszFunction) = 0;
    // Get or set a number of the brush at hand. Without a brush, and for all but the extent while
    // painting, it is 0; an amount is then no number, as it is where the function has none.
    // SetBrushValue returns what the value is now: power is 0 to 1, hardness 0 to 100, the extent
    // half a cell to the terrain's width, a height at most the terrain's, another amount 1 to 1000.
    virtual float GetBrushValue(EBrushValue eValue) = 0;
    virtual float SetBrushValue(EBrushValue eValue, float fValue) = 0;
    // Turns raising into lowering and back. fHeight: what the tool adds now. False, and fHeight of
    // no meaning, for a function that has no inverse, and without one.
    virtual bool InvertTool(float& fHeight) = 0;
    // Gives the height to the tool that sets one, which no longer picks it from the ground then,
    // as SetBrushValue does with an amount. False for another function, and without one.
    virtual bool SetToolHeight(float fHeight) = 0;
    // The picture that protects parts of the terrain from the current brush, empty for none, and
    // whether it is switched on; false without a brush, which EnableMask ignores.
    virtual std::string GetMaskPath() = 0;
    virtual bool IsMaskEnabled() = 0;
    virtual void EnableMask(bool bEnable) = 0;
    // Asks for the picture and switches it on. False without a brush and when cancelled; true also
    // for a file that cannot be read, after a logged line: GetMaskPath is empty then.
    virtual bool ChooseMask() = 0;
    // The sizes of the brush that TakeTool takes for a function; nothing is taken by it, and what
    // is at hand follows only where it is that brush. Set with the ends that SetBrushValue has; an
    // amount that is no number stays as it is. False without such a tool.
    virtual bool GetToolSizes(const char* pszFunction, SToolSizes& sizes) = 0;
    virtual bool SetToolSizes(const char* pszFunction, const SToolSizes& sizes) = 0;
};
