#pragma once
#include "ombrel/chart/Chart.h"
#include "ombrel/scene/ContourMap.h"
#include "ombrel/scene/GraphPicture.h"
#include "ombrel/scene/Scene.h"
#include "ombrel/table/TableReader.h"

// All that a program needs to draw its data: charts, scenes in three dimensions, contour maps, and the reader of text
// tables.
