#include "Platform/Linux/DesktopOpener.h"

#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include <glib.h>

#include "Support/OvWriteLog.h"

namespace orvane {
namespace {

using GlibText = std::unique_ptr<char, decltype(&g_free)>;

std::string mountsFolderOfSession() {
  const char* const folder = std::getenv("XDG_RUNTIME_DIR");
  return folder && *folder == '/' ? std::string(folder) + "/gvfs" : "";
}

// `name` in the form in which names of the network are equal if they mean the same. Empty if it isn't UTF-8.
std::string folded(std::string_view name) {
  const auto size = static_cast<gssize>(name.size());
  if (!g_utf8_validate(name.data(), size, nullptr)) return "";
  return GlibText(g_utf8_casefold(name.data(), size), &g_free).get();
}

// The value of a field "key=value" of a mount's name, folded; empty if there is none.
std::string foldedField(std::string_view fields, std::string_view key) {
  while (!fields.empty()) {
    const std::string_view field = fields.substr(0, fields.find(','));
    fields.remove_prefix(std::min(field.size() + 1, fields.size()));
    if (!field.starts_with(key) || !field.substr(key.size()).starts_with('=')) continue;
    const std::string value(field.substr(key.size() + 1));
    const GlibText unescaped(g_uri_unescape_string(value.c_str(), nullptr), &g_free);
    return unescaped ? folded(unescaped.get()) : "";
  }
  return "";
}

bool isMountOf(const std::string& name, const std::string& foldedServer, const std::string& foldedShare) {
  constexpr std::string_view kKind = "smb-share:";
  if (!name.starts_with(kKind)) return false;
  const std::string_view fields = std::string_view(name).substr(kKind.size());
  return foldedField(fields, "server") == foldedServer && foldedField(fields, "share") == foldedShare;
}

}  // namespace

DesktopOpener::DesktopOpener(std::shared_ptr<PosixProcessStarter> starter)
    : starter_(std::move(starter)), mountsFolder_(mountsFolderOfSession()) {}

bool DesktopOpener::openAddress(const std::string& address) {
  if (address.starts_with('-')) {
    OvWriteLog(2, "%s: an address can't begin with \"-\"", "DesktopOpener::openAddress");
    return false;
  }
  return starter_->start("xdg-open", {address}, "");
}

bool DesktopOpener::mountShare(const std::string& address) {
  const auto askFileManagerUnlessMounted = [starter = starter_, address](bool mounted) {
    if (!mounted) starter->start("xdg-open", {address}, "");
  };
  return starter_->start("gio", {"mount", "--", address}, "", askFileManagerUnlessMounted) || openAddress(address);
}

std::optional<std::string> DesktopOpener::mountedPath(const std::string& networkFolder) {
  const size_t serverEnd = networkFolder.find('/');
  if (serverEnd == std::string::npos) return std::nullopt;
  const size_t shareEnd = std::min(networkFolder.find('/', serverEnd + 1), networkFolder.size());
  const std::string server = folded(std::string_view(networkFolder).substr(0, serverEnd));
  const std::string share = folded(std::string_view(networkFolder).substr(serverEnd + 1, shareEnd - serverEnd - 1));
  if (server.empty() || share.empty() || mountsFolder_.empty()) return std::nullopt;

  std::error_code error;
  std::filesystem::directory_iterator mount(mountsFolder_, error);
  for (; !error && mount != std::filesystem::directory_iterator(); mount.increment(error)) {
    if (isMountOf(mount->path().filename(), server, share))
      return mount->path().string() + networkFolder.substr(shareEnd);
  }
  return std::nullopt;
}

}  // namespace orvane
