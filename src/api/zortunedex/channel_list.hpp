// Lists of channels: one that is changed, and what was read.
#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <ranges>
#include <string>
#include <utility>
#include <vector>

#include "api/zortunedex/inside.hpp"

namespace zortunedex {

namespace detail {
struct ListAccess;
}

/// The channels of a list while they are changed, in their order. References and iterators hold
/// until channels are added, removed or moved.
class channel_list {
 public:
  /// Walks the channels in their order.
  auto begin() { return m_channels.begin(); }
  /// The end of that walk.
  auto end() { return m_channels.end(); }
  /// Walks the channels in their order.
  auto begin() const { return m_channels.begin(); }
  /// The end of that walk.
  auto end() const { return m_channels.end(); }
  /// How many there are.
  std::size_t size() const { return m_channels.size(); }
  /// True for a list without channels.
  bool empty() const { return m_channels.empty(); }

  /// The channel with an index, the first one where a file has several. Raises an error where there
  /// is none.
  channel& at_index(unsigned index) { return m_channels[PlaceOf(index)]; }
  /// The same.
  const channel& at_index(unsigned index) const { return m_channels[PlaceOf(index)]; }

  /// A channel of the list's kind in which nothing is set; add puts it into the list.
  channel new_channel() const { return detail::NewChannel(m_context); }
  /// Puts a channel behind the last one and answers the index that it gets. Raises an error for a
  /// channel of another kind of signal.
  unsigned add(channel added) {
    if (added.signal() != m_context->Signal())
      Refuse("add a channel to", "it is of another signal");
    const unsigned index = m_channels.empty() ? 1 : m_channels.back().index() + 1;
    detail::Inside::Number(added, index);
    m_channels.push_back(std::move(added));
    return index;
  }
  /// Takes out the channel with an index and numbers the rest 1, 2, 3, … Raises an error where
  /// there is none.
  void remove(unsigned index) {
    m_channels.erase(m_channels.begin() + static_cast<std::ptrdiff_t>(PlaceOf(index)));
    renumber();
  }
  /// Takes out every channel that a predicate is true for, numbers the rest if there was one, and
  /// answers how many there were.
  template <std::predicate<const channel&> Predicate>
  std::size_t remove_if(Predicate predicate) {
    const std::size_t count =
        std::erase_if(m_channels, [&](const channel& c) { return std::invoke(predicate, c); });
    if (count != 0) renumber();
    return count;
  }
  /// Puts the channel with one index at the place of the one with another, and numbers the list
  /// 1, 2, 3, … Raises an error where there is none with either.
  void move(unsigned from, unsigned to) {
    const auto source = m_channels.begin() + static_cast<std::ptrdiff_t>(PlaceOf(from));
    const auto target = m_channels.begin() + static_cast<std::ptrdiff_t>(PlaceOf(to));
    if (source < target) {
      std::rotate(source, source + 1, target + 1);
    } else {
      std::rotate(target, source, source + 1);
    }
    renumber();
  }
  /// Sorts and numbers the list 1, 2, 3, …; equal channels keep their order:
  /// list.sort({}, &channel::display_name).
  template <typename Compare = std::less<>, typename Projection = std::identity>
  void sort(Compare compare = {}, Projection projection = {}) {
    std::stable_sort(begin(), end(), [&](const channel& a, const channel& b) {
      return std::invoke(compare, std::invoke(projection, a), std::invoke(projection, b));
    });
    renumber();
  }
  /// Takes all channels out.
  void clear() { m_channels.clear(); }
  /// Numbers the list 1, 2, 3, …, as a file with gaps or with an index that stands twice needs it.
  void renumber() {
    unsigned index = 0;
    for (channel& c : m_channels) detail::Inside::Number(c, ++index);
  }

 private:
  friend class channel_view;
  friend struct detail::ListAccess;

  channel_list(detail::SharedContext context, std::vector<channel> channels)
      : m_context(std::move(context)), m_channels(std::move(channels)) {}

  std::size_t PlaceOf(unsigned index) const {
    for (std::size_t place = 0; place < m_channels.size(); ++place) {
      if (m_channels[place].index() == index) return place;
    }
    Refuse("find channel " + std::to_string(index) + " of", "there is none with that index");
  }
  [[noreturn]] void Refuse(std::string operation, const char* reason) const {
    throw error(E_INVALIDARG, std::move(operation), m_context->Place(), reason);
  }

  detail::SharedContext m_context;
  std::vector<channel> m_channels;
};

/// The channels that a database has, as they were read. A copy is cheap, and keeps them as they are
/// also when the database is changed or gone.
class channel_view : public std::ranges::view_base {
 public:
  /// Walks the channels in the order of the list.
  auto begin() const { return m_list->m_channels.begin(); }
  /// The end of that walk.
  auto end() const { return m_list->m_channels.end(); }
  /// How many there are.
  std::size_t size() const { return m_list->size(); }
  /// True for a list without channels.
  bool empty() const { return m_list->empty(); }
  /// A copy of the channel with an index. Raises an error where there is none.
  channel at_index(unsigned index) const { return m_list->at_index(index); }

 private:
  friend struct detail::ListAccess;

  explicit channel_view(std::shared_ptr<const channel_list> list) : m_list(std::move(list)) {}

  std::shared_ptr<const channel_list> m_list;
};

namespace detail {

struct ListAccess {
  static channel_list Make(SharedContext context, std::vector<channel> channels) {
    return {std::move(context), std::move(channels)};
  }
  static channel_view View(channel_list list) {
    return channel_view(std::make_shared<const channel_list>(std::move(list)));
  }
  static channel_list Copy(const channel_view& view) { return *view.m_list; }
};

}  // namespace detail
}  // namespace zortunedex
