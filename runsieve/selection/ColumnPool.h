#pragma once

#include <cstddef>

namespace runsieve {

/// Memory for the columns of a selection's samples, handed from one selection to the next.
///
/// The samples of a large scan are hundreds of megabytes that live until the next selection. Fresh memory for
/// them costs more in page faults than the copying itself, so memory that the former samples gave back serves
/// the next ones. Blocks carry their size, so release() fits as the free function of a VTK array. For one
/// thread, as all selecting.
namespace ColumnPool {

/// At least that many bytes, not initialised. \throw std::bad_alloc
void* take(std::size_t bytes);
/// Gives a block back; it is kept for the next take(). Null is ignored.
void release(void* block);
/// Returns everything that is not in use to the system.
void trim();
/// Bytes that are kept and not in use.
std::size_t idleBytes();

} // namespace ColumnPool

} // namespace runsieve
