#pragma once
// What nearly every window includes; compiled once for all libraries of windows.
#include <QtWidgets/QtWidgets>
#include <memory>
#include <string>
#include <vector>
