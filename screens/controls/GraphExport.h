#pragma once

#include <QString>

class GraphControl;

/// Writes a graph into a picture file, on white whatever the screen's palette. The name's ending
/// tells the kind: ".png", ".svg" or ".pdf". Throws RunTimeError for another ending and when the
/// file cannot be written.
void ExportGraph(GraphControl& graph, const QString& fileName);
