// What every table is held against when it is compiled: no row may leave its block or touch another
// one that is used in the same direction.
#pragma once

#include <cstddef>

#include "core/station_blocks/layout.h"

namespace station_blocks::check {

struct Span {
  std::size_t first;
  std::size_t last;  // one past
};

constexpr bool Apart(Span a, Span b) { return a.last <= b.first || b.last <= a.first; }

constexpr bool RowsFit(Rows<Field> rows, std::size_t size) {
  for (const Field& a : rows) {
    if (a.offset + a.width > size) return false;
    for (const Field& b : rows) {
      const bool sameDirection = a.use == Use::Both || b.use == Use::Both || a.use == b.use;
      const Span first = {a.offset, std::size_t{a.offset} + a.width};
      const Span second = {b.offset, std::size_t{b.offset} + b.width};
      if (&a != &b && a.width != 0 && b.width != 0 && sameDirection && !Apart(first, second)) {
        return false;
      }
    }
  }
  return true;
}

constexpr bool RowsApart(Rows<Field> rows, Span span) {
  for (const Field& row : rows) {
    if (row.width != 0 && !Apart({row.offset, std::size_t{row.offset} + row.width}, span))
      return false;
  }
  return true;
}

constexpr bool RowsApart(Rows<Field> rows, Rows<Field> others) {
  for (const Field& other : others) {
    if (other.width == 0) continue;
    if (!RowsApart(rows, {other.offset, std::size_t{other.offset} + other.width})) return false;
  }
  return true;
}

constexpr bool SpanFree(const Layout& layout, Span span) {
  return span.last <= layout.size && RowsApart(layout.channel, span) &&
         RowsApart(layout.elementStreams, span) && RowsApart(layout.satelliteParams, span);
}

constexpr Span SpanOf(const StreamList& list) {
  return {list.offset, list.offset + std::size_t{list.capacity} * list.entrySize};
}

constexpr bool ListsFit(const Layout& layout) {
  for (const StreamList& list : layout.lists) {
    if (!SpanFree(layout, SpanOf(list))) return false;
    for (const StreamList& other : layout.lists) {
      if (&list != &other && !Apart(SpanOf(list), SpanOf(other))) return false;
    }
  }
  return true;
}

// Not through layout.components: with sanitizers on, the compiler does not compare addresses in
// constant expressions.
constexpr bool ComponentsFit(const Layout& layout, const ComponentList& parts) {
  return SpanFree(layout, {parts.nameOffset,
                           parts.nameOffset + std::size_t{parts.nameWidth} * parts.capacity}) &&
         SpanFree(layout, {parts.typeOffset, parts.typeOffset + std::size_t{4} * parts.capacity});
}

constexpr bool Fits(const Layout& layout) {
  return RowsFit(layout.channel, layout.size) && RowsFit(layout.elementStreams, layout.size) &&
         RowsFit(layout.satelliteParams, layout.size) &&
         RowsApart(layout.channel, layout.elementStreams) &&
         RowsApart(layout.channel, layout.satelliteParams) &&
         RowsApart(layout.elementStreams, layout.satelliteParams) && ListsFit(layout);
}

}  // namespace station_blocks::check
