#include "platform/linux/tree/pool.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <new>
#include <utility>

#include "platform/linux/tree/large_memory.h"

namespace domtree {
namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr bool kSeparateBlocks = true;
#else
constexpr bool kSeparateBlocks = false;
#endif

}  // namespace

Pool::~Pool() {
  while (m_chunks) {
    const std::size_t size = m_chunks->size;
    void* const chunk = std::exchange(m_chunks, m_chunks->next);
    size < kLargePage ? ::operator delete(chunk) : UnmapLarge(chunk, size);
  }
  while (m_large) ::operator delete(std::exchange(m_large, m_large->next));
}

bool Pool::IsPooled(std::size_t size) { return !kSeparateBlocks && size <= kLargestPooled; }

std::size_t Pool::RoomOf(std::size_t size) {
  if (!IsPooled(size)) return size;
  if (size <= kLargestStepped) return (size + kStep - 1) / kStep * kStep;
  return std::bit_ceil(size);
}

std::size_t Pool::ClassOf(std::size_t room) {
  if (room <= kLargestStepped) return room / kStep - 1;
  return kSteps - 1 + static_cast<std::size_t>(std::countr_zero(room / kLargestStepped));
}

void* Pool::Allocate(std::size_t size) {
  if (!IsPooled(size)) return AllocateLarge(size);
  const std::size_t room = RoomOf(size);
  FreeBlock*& free = m_free[ClassOf(room)];
  if (free) return std::exchange(free, free->next);
  return Cut(room);
}

void Pool::Free(void* block, std::size_t size) noexcept {
  if (!IsPooled(size)) return FreeLarge(block);
  FreeBlock*& free = m_free[ClassOf(RoomOf(size))];
  free = new (block) FreeBlock{free};
}

void* Pool::Cut(std::size_t room) {
  if (room > m_left) AddChunk(std::max(m_chunkSize, room + sizeof(Chunk)));
  m_left -= room;
  return std::exchange(m_next, m_next + room);
}

void Pool::AddChunk(std::size_t size) {
  void* const chunk = size < kLargePage ? ::operator new(size) : MapLarge(size);
  m_chunks = new (chunk) Chunk{m_chunks, size};
  m_next = reinterpret_cast<char*>(m_chunks + 1);
  m_left = size - sizeof(Chunk);
  m_chunkSize = std::min(2 * m_chunkSize, kLargePage);
}

void* Pool::AllocateLarge(std::size_t size) {
  if (size > std::numeric_limits<std::size_t>::max() - sizeof(LargeBlock)) throw std::bad_alloc();
  void* memory = ::operator new(sizeof(LargeBlock) + size);
  m_large = new (memory) LargeBlock{nullptr, m_large};
  if (m_large->next) m_large->next->previous = m_large;
  return m_large + 1;
}

void Pool::FreeLarge(void* block) noexcept {
  LargeBlock* large = static_cast<LargeBlock*>(block) - 1;
  (large->previous ? large->previous->next : m_large) = large->next;
  if (large->next) large->next->previous = large->previous;
  ::operator delete(large);
}

}  // namespace domtree
