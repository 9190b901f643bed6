#pragma once
#include "ombrel/chart/Chart.h"
#include "ombrel/table/TableReader.h"

// All that a program needs to draw charts of its data: charts, and the reader of text tables.
