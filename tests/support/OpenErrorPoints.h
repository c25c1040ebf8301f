#pragma once

#include "TableBuilder.h"

#include <runsieve/items/vtkPlotErrorPoints.h>

#include <vtkFloatArray.h>
#include <vtkObjectFactory.h>
#include <vtkPoints2D.h>

#include <string>
#include <utility>
#include <vector>

namespace runsieve::test {

/// Opens what only a chart may see, and leaves the reference count of its error column as it was.
class OpenErrorPoints : public vtkPlotErrorPoints
{
public:
  static OpenErrorPoints* New() { VTK_STANDARD_NEW_BODY(OpenErrorPoints); }

  [[nodiscard]] vtkFloatArray* errors() const { return this->ErrorArray; }
  [[nodiscard]] vtkPoints2D* points() const { return this->Points; }

  void setPoints(std::vector<std::pair<float, float>> const& positions)
  {
    if (!this->Points) this->Points = vtkPoints2D::New();
    this->Points->Reset();
    for (auto const& [x, y] : positions) this->Points->InsertNextPoint(x, y);
  }

  void setBadPoints(std::vector<vtkIdType> const& rows)
  {
    if (!this->BadPoints) this->BadPoints = vtkIdTypeArray::New();
    this->BadPoints->Reset();
    for (vtkIdType row : rows) this->BadPoints->InsertNextValue(row);
  }

protected:
  OpenErrorPoints() = default;
  ~OpenErrorPoints() override
  {
    if (vtkFloatArray* column = this->GetLiveErrorArray()) column->Register(nullptr);
  }
};

inline vtkSmartPointer<vtkFloatArray> makeFloats(std::string const& name, std::vector<float> const& values)
{
  return makeColumn<vtkFloatArray, float>(name, values);
}

} // namespace runsieve::test
