#pragma once

#include <cstddef>

namespace domtree {

/// Memory of one document tree: blocks are cut from large chunks, and what is given back serves
/// later requests of the same room, so a tree that changes for a long time does not grow. The
/// chunks of a large tree are large pages. Everything goes with the pool. Under AddressSanitizer
/// every block is an allocation of its own, so that wrong uses are seen.
class Pool {
 public:
  Pool() = default;
  Pool(const Pool&) = delete;
  Pool& operator=(const Pool&) = delete;
  ~Pool();

  /// `size` bytes (at least one), aligned for any type. Raises std::bad_alloc.
  void* Allocate(std::size_t size);
  /// Takes back what Allocate(size) answered.
  void Free(void* block, std::size_t size) noexcept;

  /// The bytes that a block of this size really has: blocks of equal room can stand for each other.
  static std::size_t RoomOf(std::size_t size);

 private:
  struct FreeBlock {
    FreeBlock* next;
  };
  struct alignas(std::max_align_t) Chunk {
    Chunk* next;
    std::size_t size;
  };
  /// In front of a block that is too large for chunks.
  struct alignas(std::max_align_t) LargeBlock {
    LargeBlock* previous;
    LargeBlock* next;
  };

  static constexpr std::size_t kStep = 16;
  static constexpr std::size_t kLargestStepped = 1024;
  static constexpr std::size_t kSteps = kLargestStepped / kStep;
  /// Rooms of 2, 4, ... 64 KiB follow the stepped ones.
  static constexpr std::size_t kDoublings = 6;
  static constexpr std::size_t kLargestPooled = kLargestStepped << kDoublings;

  static bool IsPooled(std::size_t size);
  static std::size_t ClassOf(std::size_t room);
  void* Cut(std::size_t room);
  void AddChunk(std::size_t size);
  void* AllocateLarge(std::size_t size);
  void FreeLarge(void* block) noexcept;

  FreeBlock* m_free[kSteps + kDoublings] = {};
  Chunk* m_chunks = nullptr;
  LargeBlock* m_large = nullptr;
  char* m_next = nullptr;
  std::size_t m_left = 0;
  std::size_t m_chunkSize = std::size_t{8} * 1024;
};

}  // namespace domtree
