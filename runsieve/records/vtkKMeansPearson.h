#pragma once

#include <runsieve/runsieve_export.h>

#include <vtkKMeansDistanceFunctor.h>

#include <vector>

/// The distance of two curves by their shape, for vtkKMeansStatistics: 1 - r, r being Pearson's correlation
/// coefficient, from 0 (alike but for offset and scale) over 1 (unrelated) to 2 (mirrored).
///
/// A curve that is constant, or holds a NaN or an infinity, correlates with nothing: its distance to every
/// other one is 1. Such curves join the first cluster. Source: K. Pearson, Proc. R. Soc. London 58 (1895)
/// 240-242.
class RUNSIEVE_EXPORT vtkKMeansPearson : public vtkKMeansDistanceFunctor
{
public:
  static vtkKMeansPearson* New();
  vtkTypeMacro(vtkKMeansPearson, vtkKMeansDistanceFunctor)
  void PrintSelf(ostream& os, vtkIndent indent) override;

  using vtkKMeansDistanceFunctor::operator();
  void operator()(double& distance, vtkVariantArray* first, vtkVariantArray* second) override;

protected:
  vtkKMeansPearson() = default;
  ~vtkKMeansPearson() override = default;

private:
  vtkKMeansPearson(vtkKMeansPearson const&) = delete;
  void operator=(vtkKMeansPearson const&) = delete;

  std::vector<double> FirstCurve;
  std::vector<double> SecondCurve;
};
