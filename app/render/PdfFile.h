#pragma once

#include <runsieve/items/ExportedImages.h>

#include <QByteArray>

#include <vector>

namespace runsieve::app {

/// A PDF as vtkGL2PSExporter writes it, uncompressed, made smaller and more complete: places of 1/100 point,
/// all streams compressed (deflate), images in place of their marks.
///
/// \throw std::runtime_error if it isn't such a file
QByteArray finishedPdf(QByteArray const& exported, std::vector<ExportedImages::Image> const& images);

} // namespace runsieve::app
