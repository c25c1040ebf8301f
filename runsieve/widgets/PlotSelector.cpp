#include <runsieve/widgets/PlotSelector.h>

#include <runsieve/tables/ColumnNames.h>

#include <QFontMetrics>

using Kestrane::TypedConcentrationName;

namespace {

/// The type that a group's title stands for. Plural forms are understood as well.
Kestrane::DataType typeOfGroup(QString const& title)
{
  auto is = [&title](const char* one, const char* several) {
    return title == QLatin1String(one) || title == QLatin1String(several);
  };
  if (is("Complex", "Complexes")) return Kestrane::Complex;
  if (is("Molecule", "Molecules")) return Kestrane::Molecule;
  if (is("Complex With Molecule", "Complexes With Molecules")) return Kestrane::ComplexWithMolecule;
  if (is("Pattern", "Patterns")) return Kestrane::Pattern;
  return Kestrane::Parameter;
}

} // namespace

PlotSelector::PlotSelector(QWidget* parent) : QTreeWidget(parent)
{
  setColumnCount(1);
  headerItem()->setText(0, tr("Select Items to View"));
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  connect(this, &QTreeWidget::itemSelectionChanged, this, &PlotSelector::processNewSelection);
}

PlotSelector::~PlotSelector() = default;

void PlotSelector::setMultipleSelections(bool multiple)
{
  setSelectionMode(multiple ? QAbstractItemView::MultiSelection : QAbstractItemView::SingleSelection);
}

void PlotSelector::setSelectionOptions(std::vector<TypedConcentrationName>& options)
{
  QTreeWidgetItem* former = currentItem();
  const bool hasFormer = former && former->parent();
  const QString formerName = hasFormer ? former->text(0) : QString();
  const QString formerGroup = hasFormer ? former->parent()->text(0) : QString();

  // Filling the tree must not announce each step.
  disconnect(this, &QTreeWidget::itemSelectionChanged, this, &PlotSelector::processNewSelection);
  clear();
  for (auto const& [type, name] : options) {
    auto* item = new QTreeWidgetItem(groupOf(QString::fromStdString(runsieve::displayName(type))));
    item->setText(0, QString::fromLatin1(name.data(), static_cast<int>(name.size())));
    item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsUserCheckable | Qt::ItemIsEnabled);
  }
  sortItems(0, Qt::AscendingOrder);
  if (QTreeWidgetItem* same = hasFormer ? findItem(formerGroup, formerName) : nullptr) setCurrentItem(same);
  connect(this, &QTreeWidget::itemSelectionChanged, this, &PlotSelector::processNewSelection);
  processNewSelection();
}

QTreeWidgetItem* PlotSelector::groupOf(QString const& title)
{
  const QList<QTreeWidgetItem*> known = findItems(title, Qt::MatchExactly, 0);
  if (!known.isEmpty()) return known.first();
  auto* group = new QTreeWidgetItem(this);
  group->setText(0, title);
  group->setFlags(Qt::ItemIsEnabled);
  return group;
}

QTreeWidgetItem* PlotSelector::findItem(QString const& group, QString const& name) const
{
  QTreeWidgetItem* found = nullptr;
  for (int g = 0; g < topLevelItemCount(); ++g) {
    if (topLevelItem(g)->text(0) != group) continue;
    for (int i = 0; i < topLevelItem(g)->childCount(); ++i)
      if (topLevelItem(g)->child(i)->text(0) == name) found = topLevelItem(g)->child(i);
  }
  return found;
}

void PlotSelector::processNewSelection()
{
  std::vector<TypedConcentrationName> items;
  for (QTreeWidgetItem* item : selectedItems())
    if (item->parent())
      items.emplace_back(typeOfGroup(item->parent()->text(0)), item->text(0).toLatin1().toStdString());
  Q_EMIT notifySelectionChanged(&items);
}

QSize PlotSelector::sizeHint() const
{
  const QFontMetrics metrics(font());
  return {15 * metrics.horizontalAdvance(QLatin1Char('m')), 20 * metrics.lineSpacing()};
}
