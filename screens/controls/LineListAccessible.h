#pragma once

/// Tells the desktop's screen readers about LineListView: a list whose value is its current line.
/// Called once before the first list is made; more calls do nothing.
void InstallLineListAccessible();
