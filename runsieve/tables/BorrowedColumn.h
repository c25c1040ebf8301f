#pragma once

#include <vtkDoubleArray.h>
#include <vtkSmartPointer.h>

#include <boost/shared_ptr.hpp>

#include <memory>

namespace runsieve {

/// A column over memory that somebody else owns, with a reference that keeps the owner alive.
///
/// It has no type name of its own: to everybody it is a vtkDoubleArray, and copies made through NewInstance()
/// are plain arrays that do not carry the owner along. Shallow copies of a table share the array and so keep
/// the owner.
class BorrowedColumn : public vtkDoubleArray
{
public:
  /// \param owner released with the last holder of the array
  static vtkSmartPointer<vtkDoubleArray> over(double* values, vtkIdType count, std::shared_ptr<void> owner);

protected:
  BorrowedColumn() = default;
  ~BorrowedColumn() override = default;

private:
  std::shared_ptr<void> source;
};

/// The owner of a column that borrows from a shared record.
template <class T> std::shared_ptr<void> ownedBy(boost::shared_ptr<T> const& record)
{
  return std::shared_ptr<void>(record.get(), [record](void*) {});
}

/// The owner of a column that borrows from another array.
std::shared_ptr<void> ownedBy(vtkObjectBase* object);

} // namespace runsieve
