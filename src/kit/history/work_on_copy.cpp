#include "kit/history/work_on_copy.h"

#include "kit/failure.h"
#include "kit/saving/save_watch.h"

namespace zortunedex::kit::history {
namespace {

std::string Renamed(std::string message, const std::string& from, const std::string& to) {
  for (std::size_t at = message.find(from); at != std::string::npos;
       at = message.find(from, at + to.size())) {
    message.replace(at, from.size(), to);
  }
  return message;
}

}  // namespace

void RunOnCopyOf(const std::string& directory, const std::string& scratch,
                 const std::function<void(const std::string& scratch)>& work) {
  const auto shown = [&](const std::exception& error) {
    return Renamed(error.what(), scratch, directory);
  };
  try {
    work(scratch);
  } catch (const InvalidArgument& error) {
    if (shown(error) == error.what()) throw;
    throw InvalidArgument{shown(error)};
  } catch (const FailedSave& error) {
    // What its state tells is that of the copy.
    throw Failure{error.Result(),
                  Renamed(error.cause, scratch, directory) + "; the file is unchanged"};
  } catch (const Failure& error) {
    if (shown(error) == error.what()) throw;
    throw Failure{error.Result(), shown(error)};
  }
}

}  // namespace zortunedex::kit::history
