#pragma once

#include <runsieve/records/TypedConcentrationName.h>
#include <runsieve/runsieve_export.h>

#include <QTreeWidget>

#include <vector>

/// The tree beside a line plot in which the user picks what is shown. Items stand in groups by their kind,
/// both in alphabetical order; groups cannot be selected.
class RUNSIEVE_EXPORT PlotSelector : public QTreeWidget
{
  Q_OBJECT

public:
  explicit PlotSelector(QWidget* parent = nullptr);
  ~PlotSelector() override;

  /// Whether one click selects one item, or a click more each time. A new tree has extended selection.
  void setMultipleSelections(bool multiple);
  /// Refills the tree and emits notifySelectionChanged() once. The current item stays current, and selected,
  /// if the new options have it.
  void setSelectionOptions(std::vector<Kestrane::TypedConcentrationName>& options);
  [[nodiscard]] QSize sizeHint() const override;

public Q_SLOTS:
  /// Announces the present selection.
  void processNewSelection();

Q_SIGNALS:
  /// The selected items. The list lives only as long as the signal is delivered: copy it to keep it.
  void notifySelectionChanged(std::vector<Kestrane::TypedConcentrationName>* items);

private:
  [[nodiscard]] QTreeWidgetItem* groupOf(QString const& title);
  [[nodiscard]] QTreeWidgetItem* findItem(QString const& group, QString const& name) const;
};
