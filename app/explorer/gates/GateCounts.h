#pragma once

#include "app/explorer/document/Background.h"
#include "app/explorer/document/Document.h"

#include <QObject>

#include <cstddef>
#include <optional>

namespace runsieve::app {

/// How many runs a gate that is being typed would let through, counted beside the interface.
class GateCounts : public QObject
{
  Q_OBJECT

public:
  /// \param index of the gate of the list that it would take the place of; nothing for a new one
  GateCounts(Document& document, std::optional<std::size_t> index, QObject* parent = nullptr);

  void count(Gate const& gate);
  void cancel();
  [[nodiscard]] bool isBusy() const { return work.isBusy(); }

Q_SIGNALS:
  /// \param alone runs that pass the gate \param all runs that pass with the other gates that are on
  void counted(std::size_t alone, std::size_t all);
  void failed(QString const& message);

private:
  Document& document;
  RunSet others;       ///< what the other gates let through
  bool isOnly = false; ///< no other gate asks for anything
  Background work;
};

} // namespace runsieve::app
