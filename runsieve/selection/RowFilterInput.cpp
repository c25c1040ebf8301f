#include <runsieve/selection/RowFilterInput.h>

#include <vtkAlgorithm.h>
#include <vtkAnnotation.h>
#include <vtkAnnotationLayers.h>
#include <vtkConvertSelection.h>
#include <vtkDataObject.h>
#include <vtkIdTypeArray.h>
#include <vtkInformation.h>
#include <vtkNew.h>
#include <vtkSelection.h>
#include <vtkSelectionNode.h>
#include <vtkTable.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <utility>

namespace runsieve {

namespace {

bool counts(vtkAnnotation* annotation)
{
  vtkInformation* info = annotation->GetInformation();
  if (!info->Has(vtkAnnotation::ENABLE())) return true;
  if (info->Get(vtkAnnotation::ENABLE()) == 0) return false;
  const bool hidden = info->Has(vtkAnnotation::HIDE()) && info->Get(vtkAnnotation::HIDE()) == 1;
  return !(info->Get(vtkAnnotation::ENABLE()) == 1 && hidden);
}

/// The nodes in the order of adding. A selection keeps them in the text order of their names, "node" and a
/// running number, so that node10 comes before node2.
std::vector<vtkSelectionNode*> nodesInOrder(vtkSelection* selection)
{
  std::vector<std::pair<long long, vtkSelectionNode*>> numbered;
  for (unsigned int i = 0; i < selection->GetNumberOfNodes(); ++i) {
    const std::string name = selection->GetNodeNameAtIndex(i);
    const bool isNumbered = name.compare(0, 4, "node") == 0;
    numbered.emplace_back(isNumbered ? std::strtoll(name.c_str() + 4, nullptr, 10) : 0,
                          selection->GetNode(i));
  }
  std::stable_sort(numbered.begin(), numbered.end(),
                   [](auto const& a, auto const& b) { return a.first < b.first; });
  std::vector<vtkSelectionNode*> nodes;
  for (auto const& entry : numbered) nodes.push_back(entry.second);
  return nodes;
}

/// The same nodes, which share their lists.
void shareNodes(vtkSelection* from, vtkSelection* to)
{
  for (unsigned int i = 0; i < from->GetNumberOfNodes(); ++i) {
    vtkNew<vtkSelectionNode> node;
    node->ShallowCopy(from->GetNode(i));
    to->SetNode(from->GetNodeNameAtIndex(i), node);
  }
}

/// Whether a node names rows by their numbers, as a conversion would leave it; charts call rows points.
bool namesRows(vtkSelectionNode* node)
{
  const int field = node->GetFieldType();
  return node->GetContentType() == vtkSelectionNode::INDICES &&
         (field == vtkSelectionNode::ROW || field == vtkSelectionNode::POINT) &&
         vtkIdTypeArray::SafeDownCast(node->GetSelectionList());
}

/// The selection by row numbers; itself if it is one, since a conversion copies all numbers. Null if there is
/// no way.
vtkSmartPointer<vtkSelection> byRows(vtkSelection* selection, vtkTable* table)
{
  bool all = true;
  for (unsigned int i = 0; i < selection->GetNumberOfNodes(); ++i)
    all = all && namesRows(selection->GetNode(i));
  if (all) return selection;
  return vtkSmartPointer<vtkSelection>::Take(vtkConvertSelection::ToSelectionType(
      selection, table, vtkSelectionNode::INDICES, nullptr, vtkSelectionNode::ROW));
}

/// The same nodes under names that sort in the order of adding: converting a selection walks it by name.
vtkSmartPointer<vtkSelection> renamedInOrder(vtkSelection* selection)
{
  auto ordered = vtkSmartPointer<vtkSelection>::New();
  const std::vector<vtkSelectionNode*> nodes = nodesInOrder(selection);
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const std::string number = std::to_string(i);
    ordered->SetNode("node" + std::string(10 - std::min<std::size_t>(number.size(), 10), '0') + number,
                     nodes[i]);
  }
  return ordered;
}

/// Calls add(row) for each entry of a list that is a row. A selection can be older than the table; the
/// conversion passes its ids on unchecked.
template <class Add> void forListed(vtkIdTypeArray* list, long long rowCount, Add const& add)
{
  vtkIdType const* const ids = list->GetPointer(0);
  const vtkIdType count = list->GetNumberOfTuples();
  for (vtkIdType i = 0; i < count; ++i)
    if (ids[i] >= 0 && ids[i] < rowCount) add(ids[i]);
}

/// Calls add(row) for each row that a list does not hold.
template <class Add> void forOthers(vtkIdTypeArray* list, long long rowCount, Add const& add)
{
  std::vector<unsigned char> named(static_cast<std::size_t>(rowCount), 0);
  forListed(list, rowCount, [&](long long row) { named[static_cast<std::size_t>(row)] = 1; });
  for (long long row = 0; row < rowCount; ++row)
    if (!named[static_cast<std::size_t>(row)]) add(row);
}

/// Calls add(row) for each selected row. False if the selection cannot be converted to rows.
template <class Add> bool forSelected(vtkSelection* selection, vtkTable* table, Add const& add)
{
  const vtkSmartPointer<vtkSelection> rows = byRows(selection, table);
  if (!rows) return false;
  for (vtkSelectionNode* node : nodesInOrder(rows)) {
    auto* list = vtkIdTypeArray::SafeDownCast(node->GetSelectionList());
    if (!list || !namesRows(node)) continue;
    if (node->GetProperties()->Get(vtkSelectionNode::INVERSE()))
      forOthers(list, table->GetNumberOfRows(), add);
    else
      forListed(list, table->GetNumberOfRows(), add);
  }
  return true;
}

} // namespace

int describeRowFilterPort(int port, vtkInformation* info)
{
  static const char* const types[] = {"vtkTable", "vtkSelection", "vtkAnnotationLayers"};
  if (port < 0 || port > 2) return 0;
  info->Set(vtkAlgorithm::INPUT_REQUIRED_DATA_TYPE(), types[port]);
  if (port > 0) info->Set(vtkAlgorithm::INPUT_IS_OPTIONAL(), 1);
  return 1;
}

UnitedSelection uniteSelections(vtkSelection* input, vtkAnnotationLayers* annotations)
{
  std::vector<vtkAnnotation*> counting;
  const unsigned int count = annotations ? annotations->GetNumberOfAnnotations() : 0;
  for (unsigned int i = 0; i < count; ++i)
    if (vtkAnnotation* annotation = annotations->GetAnnotation(i); counts(annotation))
      counting.push_back(annotation);
  UnitedSelection united;
  united.selection = vtkSmartPointer<vtkSelection>::New();
  united.sources = static_cast<int>(counting.size()) + (input ? 1 : 0);
  // Uniting appends to lists.
  if (input && counting.empty())
    shareNodes(input, united.selection);
  else if (input)
    united.selection->DeepCopy(input);
  for (vtkAnnotation* annotation : counting)
    if (vtkSelection* selection = annotation->GetSelection()) united.selection->Union(selection);
  united.selection = renamedInOrder(united.selection);
  return united;
}

bool selectedRows(vtkSelection* selection, vtkTable* table, std::vector<long long>& rows)
{
  return forSelected(selection, table, [&](long long row) { rows.push_back(row); });
}

bool flagSelectedRows(vtkSelection* selection, vtkTable* table, std::vector<unsigned char>& flags)
{
  flags.assign(static_cast<std::size_t>(table->GetNumberOfRows()), 0);
  return forSelected(selection, table, [&](long long row) { flags[static_cast<std::size_t>(row)] = 1; });
}

} // namespace runsieve
