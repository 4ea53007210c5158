#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// @file
/// What a demo broker serves and how it misbehaves, as plain records. All text is UTF-8. Every member has an
/// initialiser, so that a caller can name just those that it sets.

namespace orvane::demo {

/// What a broker says no with: its errorcode and errortext.
struct Refusal {
  int code = 0;
  std::string text{};
};

/// Somebody who may log in. Domain and name are compared without regard to the case of ASCII letters.
struct User {
  std::string domain{};  ///< empty: any domain will do
  std::string name{};
  std::string password{};
  std::set<std::string> groups{};  ///< decide which applications the user sees
  /// Given in place of a cookie, whatever the password is (an account that is locked or expired).
  std::optional<Refusal> refusal{};
};

/// An icon in the text form that brokers send (see iconFromPng).
struct Icon {
  std::string large{};  ///< 32 x 32
  std::string small{};  ///< 16 x 16
};

struct Application {
  std::string name{};      ///< the key that a launch names
  std::string shortcut{};  ///< the display name
  std::string path{};
  std::string arguments{};
  std::string workingDirectory{};
  std::string folder{};
  std::shared_ptr<const Icon> icon{};  ///< null: sent without icons
  int showCommand = 0;
  int type = 1;  ///< 2 a desktop, 4 a document or web address that the client opens by itself
  int desktopShortcutLocation = 0;
  /// Who sees it: users of any of these groups, all if there are none. Anonymous users are of the group "anonymous".
  std::set<std::string> groups{};
  /// What the launch answer holds besides, by element name (see kLaunchElements); an element that isn't here isn't
  /// sent.
  std::map<std::string, std::string> launch{};
  std::optional<Refusal> refusal{};  ///< given in place of launch data
};

/// A session as the broker sees it: element name (see kSessionElements) and text. `domain` and `uname` say whose it is.
using Session = std::map<std::string, std::string>;

/// A ticket that may be exchanged, any number of times, for the credentials of the user of this domain and name.
struct Ticket {
  std::string text{};
  std::string domain{};
  std::string userName{};
};

/// The central configuration that clients are to hold.
struct Configuration {
  std::string guid{};
  std::string timestamp{};
  std::string path{};           ///< absolute URL or relative to the broker
  std::optional<int> status{};  ///< sent in place of the outcome of the comparison
};

/// The newest client, offered (options 0) or required (1) of older ones.
struct ConnectorUpdate {
  std::string minVersion{};
  std::string installLocation{};  ///< absolute URL or relative to the broker
  int options = 0;
};

/// A file that is answered to a GET of its path, at the root and behind any "/proxy/".
struct ServedFile {
  std::string path{};  ///< without a leading slash
  std::string contentType = "application/octet-stream";
  std::string content{};
  /// Answer with the broker's own address, as the request names it, in place of `${host}`, `${port}` and `${https}` (1
  /// or 0) in the content.
  bool fillIn = false;
  bool encipher = false;  ///< answer with the content in the container of launch files
};

/// A misbehaviour upon request. Of several faults that fit a request, the first in the list acts.
struct Fault {
  enum class Kind {
    kRefuse,      ///< the connection ends without an answer
    kCut,         ///< the connection ends behind `number` bytes of the body
    kTrickle,     ///< the answer comes in writes of one byte
    kStall,       ///< nothing comes until DemoBroker::releaseStalled; a broker that stops ends the connection
    kStatus,      ///< HTTP status `number`; for 3xx `text` is the Location
    kEmptyBody,   ///< status 200 and nothing else
    kWrongRoot,   ///< status 200 and a page of another kind
    kErrorCode,   ///< a well-formed answer with the errorcode `number` and the errortext `text`; files come as ever
    kEndlessBody  ///< the answer begins and goes on with blanks until the client gives up
  };

  Kind kind = Kind::kRefuse;
  /// A message's name (`authenticate`), `brokerinfo`, a path that begins with "/", or empty for every request.
  std::string request{};
  int nth = 1;     ///< from which fitting request on, counted from 1 and from when the fault was added
  int times = 1;   ///< for how many requests in a row; 0 for all that follow
  int number = 0;  ///< bytes, status or errorcode
  std::string text{};
};

/// The bits of `capabilities`.
inline constexpr int kCapabilityConnectorInfo = 1;
inline constexpr int kCapabilityConnectorInfoNeedsLogIn = 2;
inline constexpr int kCapabilityUtf8 = 4;

struct FarmDescription {
  std::string name = "Demo Farm";
  bool anonymousAllowed = false;
  std::optional<int> capabilities = kCapabilityConnectorInfo | kCapabilityUtf8;  ///< nothing: a broker that tells none
  int cookieUses = 0;  ///< how many requests a cookie is good for; 0 for any number
  std::vector<User> users{};
  /// What authenticate-rsp fixes, by element name (see kPolicyElements); the text is sent as it stands.
  std::vector<std::pair<std::string, std::string>> policies{};
  std::vector<Application> applications{};
  std::vector<Session> sessions{};
  std::vector<Ticket> tickets{};
  std::optional<Configuration> configuration{};  ///< nothing: no configuration is assigned to anybody
  std::optional<ConnectorUpdate> connectorUpdate{};
  std::vector<ServedFile> files{};
  std::vector<Fault> faults{};
};

/// The elements of authenticate-rsp that fix a policy, of launchapplication-rsp that Application::launch may hold, and
/// of a session in getsessionlist-rsp, each in the order of the answer.
extern const std::vector<std::string_view> kPolicyElements;
extern const std::vector<std::string_view> kLaunchElements;
extern const std::vector<std::string_view> kSessionElements;

/// The kind of a fault by its name in a farm file: refuse, cut, trickle, stall, status, empty, wrong-root, error,
/// endless.
std::optional<Fault::Kind> faultKindOf(std::string_view name);

}  // namespace orvane::demo
