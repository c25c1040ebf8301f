#pragma once

namespace Kestrane {

/// The kind of a simulated item; stored as a 32-bit integer.
enum DataType : int
{
  Complex = 0,
  Molecule = 1,
  ComplexWithMolecule = 2,
  Pattern = 3,
  Unnamed = 4, ///< auxiliary columns such as "Time [s]"; shown with an empty type name
  Parameter = 5,
  UndefinedType = 6
};

} // namespace Kestrane
