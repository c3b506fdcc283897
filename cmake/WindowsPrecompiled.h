#pragma once
// What nearly every window includes; compiled once for each library of windows.
#include <QtWidgets/QtWidgets>
#include <memory>
#include <string>
#include <vector>
