#pragma once

#include "editor/core/CEditorHost.h"
#include "editor/core/CHeadlessFace.h"
#include "editor/core/CPluginLoader.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <functional>
#include <string>
#include <vector>

// The shipped plug-in on the headless host, driven by mouse events at terrain positions, for
// measuring what a designer waits for.
class CBenchHost
{
public:
    // A level of uVertices squared with gentle hills, one unit a cell. Ends the process when the
    // plug-in cannot be loaded.
    explicit CBenchHost(uint32_t uVertices);

    // The host of the process, made anew for another size: there is only one, as the plug-in is one
    // object. The main function drops it, because statics of the libraries, which are made later,
    // would be gone before it.
    static CBenchHost& GetShared(uint32_t uVertices);
    static void DropShared();

    // Makes a brush current: function "RelativeHeightFunction" and so on, footprint side in units.
    void SetBrush(const char* pszFunction, float fExtent, const char* pszAttribs = "");
    void Press(float fX, float fZ);
    void Move(float fX, float fZ);
    void Release(float fX, float fZ);

    size_t CountChanged(); // vertices that are not as the level began

    // Makes and shows the plug-in's panel; without it there are no windows.
    void SetOpenView(std::function<bool(const CRuntimeClass*)> onOpenView)
    {
        m_Face.m_OnOpenView = std::move(onOpenView);
    }

    CEditorHost& GetHost() { return m_Host; }

    IPlugin* GetPlugin() { return m_Loader.GetPlugin(); }

    CTerrain& GetTerrain() { return *m_Host.GetEngine().GetCWorld().GetCTerrain(); }

private:
    class CFace : public CHeadlessFace
    {
    public:
        bool PickTerrain(ViewId, ViewPoint, SVec3& hit) override
        {
            hit = m_Hit;
            return true;
        }

        bool OpenPluginView(const CRuntimeClass* pClass) override
        {
            return m_OnOpenView && m_OnOpenView(pClass);
        }

        SVec3 m_Hit;
        std::function<bool(const CRuntimeClass*)> m_OnOpenView;
    };

    void Point(float fX, float fZ);
    std::vector<float> GetHills(uint32_t uVertices, uint32_t uRow);

    std::vector<float> m_Waves; // along x
    CFace m_Face;
    CEditorHost m_Host;
    CPluginLoader m_Loader;
};

// Seconds a call takes.
template <class TFn> double TakeTime(TFn fn)
{
    const auto start = std::chrono::steady_clock::now();
    fn();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// Collects pairs of times, the tool's and its yardstick's, and reports the ratio of their medians.
class CRatio
{
public:
    void Add(double fTool, double fYardstick)
    {
        m_Tool.push_back(fTool);
        m_Yardstick.push_back(fYardstick);
    }

    double GetTool() const { return GetMedian(m_Tool); }

    double GetYardstick() const { return GetMedian(m_Yardstick); }

    double GetRatio() const { return GetTool() / GetYardstick(); }

    double GetWorst() const; // of the tool

    // Times in milliseconds.
    void Report(benchmark::State& state) const;

private:
    static double GetMedian(std::vector<double> values);

    std::vector<double> m_Tool;
    std::vector<double> m_Yardstick;
};

// Makes a brush of the plug-in current, in the terraforming mode; see CBenchHost::SetBrush.
void TakeBrush(IPlugin* pPlugin,
               const char* pszFunction,
               float fExtent,
               const char* pszAttribs = "");

// Absolute path of the folder that the benchmark program is in, without a final slash.
std::string GetProgramFolder();
