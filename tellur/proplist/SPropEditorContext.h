#pragma once

class CListCtrl;
class CPropBrowser;
class CPropRowModel;
class CPropTextHooks;

// What the in-place editors of a list work with. All of it is borrowed and outlives them.
struct SPropEditorContext
{
    CListCtrl& list; // whose cells they lie over; their windows are its children
    CPropRowModel& model;
    CPropBrowser& browser;
    const CPropTextHooks& hooks;
};
