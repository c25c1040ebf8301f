#pragma once

#include "app/explorer/document/Document.h"

#include <runsieve/core/compare/ClusterMode.h>

#include <QDialog>

#include <cstddef>

class QComboBox;
class QSpinBox;

namespace runsieve::app {

class SearchableBox;

/// How runs are to be grouped by their shape.
struct ClusterRequest
{
  std::size_t output = 0;
  ClusterMode mode = ClusterMode::Curves;
  int clusters = 4;
};

/// "curves", "phase" or "magnitude".
[[nodiscard]] char const* modeName(ClusterMode mode);

/// Asks how runs are to be grouped.
class ClusterForm : public QDialog
{
  Q_OBJECT

public:
  explicit ClusterForm(Document& document, QWidget* parent = nullptr);

  [[nodiscard]] ClusterRequest request() const;

private:
  SearchableBox* output = nullptr;
  QComboBox* mode = nullptr;
  QSpinBox* count = nullptr;
};

} // namespace runsieve::app
