#pragma once

#include "Page.h"

#include <string>
#include <vector>

namespace gallery {

/// All pages, in the order of their numbers, which start at 1.
std::vector<Page> const& allPages();

/// The page of a number or name; null if there is none.
Page const* findPage(std::string const& numberOrName);

// The pages by subject, in a file for each.

// Scatter.cpp
Page scatterPage();
Page multiPlotPage();
Page scatterMatrixPage();
Page scatter3DPage();
Page parallelCoordinatesPage();

// TimeCourses.cpp
Page runsOverTimePage();
Page selectionViewPage();
Page timeCoursesPage();

// Sobol.cpp
Page sobolBarsPage();
Page sobolStackedPage();

// Fit.cpp
Page errorBarsPage();
Page fitCoursePage();

// Residuals.cpp: over time and over samples, residuals and curves
std::vector<Page> residualPages();

// Distributions.cpp: one of each kind
std::vector<Page> distributionPages();

} // namespace gallery
