#pragma once

#include "framework/core/CToolBar.h"

// The plug-in's toolbar.
class CToolBarReg : public CToolBar
{
};
