// What QML gets from this folder.
#pragma once

// Registers FramelessWindow, ClockTimer and Rest in the module QtHeron.Window 1.0. Once,
// before the first page is loaded.
void registerUiTypes();
