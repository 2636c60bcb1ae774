#pragma once

#include <QString>

class PaperGraph;

/// Writes a graph into a picture file, on white whatever the screen's palette. The name's ending
/// tells the kind: ".png", ".svg" or ".pdf". Throws RunTimeError for another ending and when the
/// file cannot be written.
void ExportGraph(PaperGraph& graph, const QString& fileName);
