#include <runsieve/records/vtkKMeansPearson.h>

#include <runsieve/core/kernels/Correlation.h>

#include <vtkObjectFactory.h>
#include <vtkVariantArray.h>

#include <algorithm>

namespace {

void copy(vtkVariantArray* from, std::vector<double>& to)
{
  to.resize(static_cast<std::size_t>(from->GetNumberOfValues()));
  vtkVariant const* values = from->GetPointer(0);
  std::transform(values, values + to.size(), to.begin(), [](vtkVariant const& v) { return v.ToDouble(); });
}

} // namespace

vtkKMeansPearson* vtkKMeansPearson::New()
{
  VTK_STANDARD_NEW_BODY(vtkKMeansPearson);
}

void vtkKMeansPearson::PrintSelf(ostream& os, vtkIndent indent)
{
  this->Superclass::PrintSelf(os, indent);
}

void vtkKMeansPearson::operator()(double& distance, vtkVariantArray* first, vtkVariantArray* second)
{
  copy(first, this->FirstCurve);
  copy(second, this->SecondCurve);
  const std::size_t n = std::min(this->FirstCurve.size(), this->SecondCurve.size());
  // Always finite: a NaN would win every comparison with the distances to other centres.
  distance = 1.0 - runsieve::correlation(this->FirstCurve.data(), this->SecondCurve.data(), n);
}
