#pragma once

#include "Platform/WindowHost.h"

class AppDelegate;
class QWidget;

namespace orvane {

/// The view of what an auxiliary window shows; the caller's. The program's controllers outlive it.
QWidget* makeSurface(AuxiliaryWindow window, AppDelegate& program);

}  // namespace orvane
