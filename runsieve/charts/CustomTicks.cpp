#include <runsieve/charts/CustomTicks.h>

#include <vtkAxis.h>
#include <vtkDoubleArray.h>
#include <vtkStringArray.h>

namespace runsieve {

namespace {

bool equal(vtkStringArray* a, vtkStringArray* b)
{
  if (a->GetNumberOfValues() != b->GetNumberOfValues()) return false;
  for (vtkIdType i = 0; i < a->GetNumberOfValues(); ++i)
    if (a->GetValue(i) != b->GetValue(i)) return false;
  return true;
}

vtkSmartPointer<vtkDoubleArray> counted(vtkIdType count)
{
  auto positions = vtkSmartPointer<vtkDoubleArray>::New();
  for (vtkIdType i = 0; i < count; ++i) positions->InsertNextValue(static_cast<double>(i));
  return positions;
}

} // namespace

void CustomTicks::show(vtkAxis* axis, vtkStringArray* texts, vtkDoubleArray* positions)
{
  if (!texts || texts->GetNumberOfValues() < 1) return remove(axis);
  const bool placed = positions && positions->GetNumberOfValues() > 0;
  vtkSmartPointer<vtkDoubleArray> at = positions;
  if (!placed) at = counted(texts->GetNumberOfValues());
  if (!axis->SetCustomTickPositions(at, texts)) return; // as many positions as texts are needed
  shownOn = axis;
  shown = vtkSmartPointer<vtkStringArray>::New();
  shown->DeepCopy(texts);
}

void CustomTicks::remove(vtkAxis* axis)
{
  if (shownOn.GetPointer() != axis) return;
  if (equal(axis->GetTickLabels(), shown)) axis->SetCustomTickPositions(nullptr, nullptr);
  shownOn = nullptr;
}

} // namespace runsieve
