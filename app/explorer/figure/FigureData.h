#pragma once

#include "app/explorer/figure/FigureContent.h"
#include "app/explorer/figure/FigureOptions.h"

#include <QString>
#include <QStringList>

#include <string>

namespace runsieve::app {

/// The runs of a figure as CSV: run, group, time and the outputs that are shown, for the times that are
/// shown. Groups are "passing" and "other"; without gates all are "other".
[[nodiscard]] std::string figureRunsCsv(FigureContent const& content, FigureOptions const& options);

/// The cumulative curves of the parameters that are shown as CSV: parameter, group, value, share of the runs
/// up to the value.
[[nodiscard]] std::string figureCurvesCsv(FigureContent const& content, FigureOptions const& options);

/// The table of all parameters, as `runsieve rank --format csv` prints it; empty without a comparison.
[[nodiscard]] std::string figureParametersCsv(FigureContent const& content);

/// Where they stand beside a figure, with the bands of runs if it has such.
[[nodiscard]] QStringList figureDataFiles(FigureContent const& content, FigureOptions const& options,
                                          QString const& figure);

/// Writes them there. \return the files \throw ScanError
QStringList writeFigureData(FigureContent const& content, FigureOptions const& options,
                            QString const& figure);

} // namespace runsieve::app
