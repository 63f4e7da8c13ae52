// ZorTunedex for C++20, in one header: channels, satellites, dishes and presets as values, changes
// that are proven before they are made, and exceptions that say what is wrong.
//
//   const zortunedex::library library;
//   auto db = library.open("samples/home", 49, zortunedex::signal::dvb_satellite);
//   for (const zortunedex::channel& c : db.channels()) use(c.index(), c.get<"serviceID">());
//   db.edit([](zortunedex::channel_list& list) { list.at_index(5).set_favorite(); });
//
// Texts are UTF-8 std::string, paths std::filesystem::path. What cannot be done raises
// zortunedex::error and leaves everything as it was. docs/cpp.md is the guide.
//
// Linux: link libZorTunedex. Windows: link ole32, oleaut32 and uuid (shell32 for arguments), and
// have ZorTunedex.dll beside the program; use a library and what comes from it on one thread.
#pragma once

#include <concepts>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "api/zortunedex/arguments.hpp"
#include "api/zortunedex/channel.hpp"
#include "api/zortunedex/channel_list.hpp"
#include "api/zortunedex/dishes.hpp"
#include "api/zortunedex/edit.hpp"
#include "api/zortunedex/error.hpp"
#include "api/zortunedex/presets.hpp"
#include "api/zortunedex/satellites.hpp"
#include "api/zortunedex/signal.hpp"

namespace zortunedex {

/// The data of one directory, for a country and a kind of signal. It holds no file and no lock;
/// whatever is asked for is read when it is asked for, but for the channels, which are those that
/// were there when it was opened, refreshed or edited last. Moves and copies freely.
class database {
 public:
  /// The directory that was opened, as it was named then; it stays that one when the program's own
  /// directory changes.
  std::filesystem::path directory() const { return m_location.origin; }
  /// The telephone country code.
  std::uint32_t country() const { return m_location.country; }
  /// The kind of signal.
  zortunedex::signal signal() const { return m_location.kind; }

  /// The channels of the country and the signal. What is answered stays as it is, also while the
  /// database is edited.
  channel_view channels() const { return m_channels; }
  /// A channel in which nothing is set, for channel_list::add.
  channel new_channel() const { return detail::ListAccess::Copy(m_channels).new_channel(); }
  /// Reads the channels again. Raises an error as library::open does; the old ones stay then.
  void refresh() { m_channels = detail::ListAccess::View(detail::LoadChannels(m_location)); }

  /// Changes the channels: `change` gets those that the file has now and changes them, then they
  /// are saved, read back and compared. Where the file would not hold what was meant, or cannot be
  /// written, an error is raised and the file is as it was; so it is when `change` raises
  /// something. Nothing is written where nothing was changed, unless a form is asked for.
  template <std::invocable<channel_list&> Change>
  void edit(Change&& change, std::optional<file_form> form = std::nullopt) {
    m_channels = detail::ListAccess::View(
        detail::EditChannels(m_location, form, std::forward<Change>(change)));
  }

  /// The satellites of the catalogue, in the order of the file. Raises an error where there is
  /// none, or none that can be read.
  std::vector<satellite> satellites() const { return detail::ReadCatalogue(m_location).satellites; }
  /// The LNB types of the catalogue. Raises an error as satellites does.
  std::vector<lnb_type> lnbs() const { return detail::ReadCatalogue(m_location).lnbs; }

  /// What the four dishes receive; nothing where no file says. Raises an error for one that cannot
  /// be read.
  dish_list dishes() const { return detail::ReadDishes(m_location); }
  /// Changes what the dishes receive, with the promises of edit.
  template <std::invocable<dish_list&> Change>
  void edit_dishes(Change&& change) {
    detail::EditDishes(m_location, std::forward<Change>(change));
  }

  /// The presets of one-segment reception with the customer's lists. Raises an error for a database
  /// of another kind of signal, and where there is no file with presets that can be read.
  preset_table presets() const { return detail::ReadPresets(m_location); }
  /// Makes the channels of a sub-area, or of a list of the customer (in the customer's area), those
  /// of the channel file; what was there goes. Promises what edit does. Raises an error for a
  /// sub-area that there is not.
  void select_preset(std::int32_t area, std::int32_t sub_area) {
    m_channels = detail::ListAccess::View(detail::SelectPreset(m_location, area, sub_area));
  }
  /// Stores the channels of the file as a new list of the customer and answers its number. Promises
  /// what edit does.
  std::int32_t save_customer_list(const std::string& name) {
    return detail::SaveCustomerList(m_location, name);
  }
  /// Deletes a list of the customer; those behind it move up. Promises what edit does.
  void delete_customer_list(std::int32_t number) { detail::DeleteCustomerList(m_location, number); }

 private:
  friend class library;

  explicit database(detail::Location location)
      : m_location(std::move(location)),
        m_channels(detail::ListAccess::View(detail::LoadChannels(m_location))) {}

  detail::Location m_location;
  channel_view m_channels;
};

/// The way to the library. It may go before what came from it.
class library {
 public:
  /// Raises an error where the library is not there.
  library() : m_component(std::make_shared<const Component>()) {
    ComPtr<IClassFactory> factory;
    detail::Require(
        m_component->GetClassObject(CLSID_ZorTunedex, IID_IClassFactory, (void**)factory.Receive()),
        "use", "ZorTunedex", "the library is not there");
  }

  /// Opens a directory for a telephone country code and a kind of signal and reads its channels;
  /// without a channel file there are none. Raises an error for a directory that is not there, a
  /// file that cannot be read, and a value that is no kind of signal.
  database open(const std::filesystem::path& directory, std::uint32_t country,
                zortunedex::signal kind) const {
    detail::LayoutOf(kind);
    std::error_code failure;  // an empty path then, which is no directory
    return database(
        {m_component, std::filesystem::absolute(directory, failure), country, kind, directory});
  }

 private:
  std::shared_ptr<const Component> m_component;
};

}  // namespace zortunedex
