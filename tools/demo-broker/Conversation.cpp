#include "Conversation.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <functional>

#include <strings.h>

#include "Support/RandomBytes.h"
#include "Support/SecureMemory.h"
#include "Tickets.h"

namespace orvane::demo {
namespace {

using Body = Conversation::Body;

constexpr int kNotLoggedIn = 1244;
const Refusal kInvalidData = {13, "The data is invalid."};
const Refusal kUnknownUser = {1326, "The user name or password is incorrect."};
const Refusal kUnknownTicket = {1312, "The ticket is unknown or has expired."};
const Refusal kUnknownCookie = {kNotLoggedIn, "You are not logged in."};
const Refusal kUnknownApplication = {1168, "This application is not published to you."};
constexpr const char* kAnonymousGroup = "anonymous";

Coding codingOf(const FarmDescription& farm) {
  return farm.capabilities.value_or(0) & kCapabilityUtf8 ? Coding::kUtf8 : Coding::kSingleByte;
}

bool equalsIgnoringCase(const std::string& a, const std::string& b) { return strcasecmp(a.c_str(), b.c_str()) == 0; }

Body bodyOf(const AnswerWriter& writer) { return std::make_shared<const std::string>(writer.text()); }

AnswerWriter answerTo(const std::string& message, Coding coding, const Refusal& refusal = {}) {
  AnswerWriter writer(message + (message == "brokerinfo" ? "" : "-rsp"), coding);
  writer.add("errorcode", refusal.code);
  if (refusal.code != 0) writer.add("errortext", refusal.text);
  return writer;
}

std::string randomCookie() {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::array<unsigned char, 16> bytes;
  fillWithRandomBytes(bytes.data(), bytes.size());
  std::string cookie;
  for (const unsigned char byte : bytes) cookie += {kDigits[byte >> 4], kDigits[byte & 15]};
  return cookie;
}

const User* findUser(const FarmDescription& farm, const std::string& domain, const std::string& name) {
  for (const User& user : farm.users) {
    if (equalsIgnoringCase(user.name, name) && (user.domain.empty() || equalsIgnoringCase(user.domain, domain))) {
      return &user;
    }
  }
  return nullptr;
}

bool isVisible(const Application& application, const User& user) {
  return application.groups.empty() ||
         std::any_of(application.groups.begin(), application.groups.end(),
                     [&](const std::string& group) { return user.groups.contains(group); });
}

/// Who logs in with these credentials, or why nobody does.
const User* checkCredentials(const FarmDescription& farm, const Message& message, Refusal& refusal) {
  static const User kAnonymous = {.groups = {kAnonymousGroup}};
  if (message.field("anonymous") == "1") {
    if (farm.anonymousAllowed) return &kAnonymous;
    refusal = {kUnknownUser.code, "Anonymous log-in is not allowed."};
    return nullptr;
  }

  std::string password = decipheredPassword(message.field("password"));
  const WipeAtEnd passwordGuard(password);
  std::string decoded = decode(message.coding, password);
  const WipeAtEnd decodedGuard(decoded);
  const User* user = findUser(farm, message.field("domain"), message.field("username"));
  if (user == nullptr || (!user->refusal && user->password != decoded)) {
    refusal = kUnknownUser;
    return nullptr;
  }
  if (user->refusal) {
    refusal = *user->refusal;
    return nullptr;
  }
  return user;
}

/// Compares dotted numbers part by part, so that 1.10 is above 1.9; what is no number counts as 0.
bool isOlder(const std::string& version, const std::string& other) {
  const auto partsOf = [](const std::string& text) {
    std::vector<int> parts;
    for (size_t begin = 0; begin <= text.size();) {
      const size_t end = std::min(text.find('.', begin), text.size());
      int part = 0;
      std::from_chars(text.data() + begin, text.data() + end, part);
      parts.push_back(part);
      begin = end + 1;
    }
    while (!parts.empty() && parts.back() == 0) parts.pop_back();
    return parts;
  };
  return partsOf(version) < partsOf(other);
}

int configurationStatus(const std::optional<Configuration>& configuration, const Message& message) {
  enum { kCurrent = 1, kRequired = 2, kNotFound = 3 };
  if (!configuration) return kNotFound;
  if (configuration->status) return *configuration->status;
  const bool current = message.field("connectorinfo/configguid") == configuration->guid &&
                       message.field("connectorinfo/configtimestamp") == configuration->timestamp;
  return current ? kCurrent : kRequired;
}

void addProgram(AnswerWriter& writer, pugi::xml_node parent, const Application& application) {
  writer.addUnlessEmpty(parent, "shortcut", application.shortcut);
  writer.addUnlessEmpty(parent, "path", application.path);
  writer.addUnlessEmpty(parent, "arguments", application.arguments);
  writer.addUnlessEmpty(parent, "workingdir", application.workingDirectory);
  writer.add(parent, "showcmd", std::to_string(application.showCommand));
  writer.add(parent, "apptype", std::to_string(application.type));
}

void addElements(AnswerWriter& writer, pugi::xml_node parent, const std::vector<std::string_view>& names,
                 const std::map<std::string, std::string>& texts) {
  for (const std::string_view name : names) {
    const auto found = texts.find(std::string(name));
    if (found != texts.end()) writer.add(parent, name, found->second);
  }
}

}  // namespace

const Conversation::Handler Conversation::kHandlers[] = {
    {"authenticate", false, &Conversation::authenticate},
    {"validateticket", false, &Conversation::exchangeTicket},
    {"authenticateticket", false, &Conversation::exchangeTicket},
    {"getconnectorinfo", false, &Conversation::connectorInfo},
    {"getfarmproperties", true, &Conversation::farmProperties},
    {"getapplicationlist", true, &Conversation::applicationList},
    {"launchapplication", true, &Conversation::launchApplication},
    {"getsessionlist", true, &Conversation::sessionList},
};

Conversation::Conversation(FarmDescription farm) : farm_(std::make_shared<const FarmDescription>(std::move(farm))) {}

std::shared_ptr<const FarmDescription> Conversation::farm() const {
  const std::lock_guard lock(mutex_);
  return farm_;
}

Coding Conversation::coding() const { return codingOf(*farm()); }

Body Conversation::brokerInfo() const {
  const auto farm = this->farm();
  AnswerWriter writer("brokerinfo", codingOf(*farm));
  if (farm->capabilities) writer.add("capabilities", *farm->capabilities);
  return bodyOf(writer);
}

Body Conversation::answer(const Message& message) {
  const auto handler = std::find_if(std::begin(kHandlers), std::end(kHandlers),
                                    [&](const Handler& candidate) { return candidate.message == message.name; });
  if (handler == std::end(kHandlers)) return nullptr;

  const auto farm = this->farm();
  Request request = {message, *farm, codingOf(*farm), {}};
  const std::string cookie = message.field("cookie");
  if (handler->needsCookie || !cookie.empty()) {
    std::optional<LogIn> logIn = useCookie(cookie);
    if (!logIn) return refusal(message.name, kUnknownCookie);
    request.logIn = std::move(*logIn);
  }
  return (this->*handler->answer)(request);
}

Body Conversation::refusal(const std::string& message, const Refusal& refusal) const {
  return bodyOf(answerTo(message, coding(), refusal));
}

std::optional<ServedFile> Conversation::file(const std::string& path) const {
  const auto farm = this->farm();
  const auto found = std::find_if(farm->files.begin(), farm->files.end(),
                                  [&](const ServedFile& candidate) { return candidate.path == path; });
  return found == farm->files.end() ? std::nullopt : std::optional(*found);
}

void Conversation::expireCookies() {
  const std::lock_guard lock(mutex_);
  cookies_.clear();
}

void Conversation::changeFarm(const std::function<void(FarmDescription&)>& change) {
  const std::lock_guard lock(mutex_);
  auto changed = std::make_shared<FarmDescription>(*farm_);
  change(*changed);
  farm_ = std::move(changed);
  applicationLists_.clear();
}

std::optional<Conversation::LogIn> Conversation::useCookie(const std::string& cookie) {
  const std::lock_guard lock(mutex_);
  const auto found = cookies_.find(cookie);
  if (found == cookies_.end()) return std::nullopt;
  LogIn logIn = found->second;
  if (found->second.usesLeft > 0 && --found->second.usesLeft == 0) cookies_.erase(found);
  return logIn;
}

Body Conversation::authenticate(const Request& request) {
  Refusal refusal;
  const User* user = checkCredentials(request.farm, request.message, refusal);
  AnswerWriter writer = answerTo(request.message.name, request.coding, refusal);
  if (user != nullptr) {
    const std::string cookie = randomCookie();
    LogIn logIn = {*user, request.farm.cookieUses};
    wipe(logIn.user.password);
    {
      const std::lock_guard lock(mutex_);
      cookies_.emplace(cookie, std::move(logIn));
    }
    writer.add("cookie", cookie);
    for (const auto& [element, value] : request.farm.policies) writer.add(element, value);
  }
  if (request.farm.capabilities) writer.add("capabilities", *request.farm.capabilities);
  return bodyOf(writer);
}

Body Conversation::exchangeTicket(const Request& request) {
  const auto ticketRequest = decipherTicketRequest(request.message.field("ticket"));
  if (!ticketRequest) return refusal(request.message.name, kInvalidData);
  const auto& tickets = request.farm.tickets;
  const auto ticket = std::find_if(tickets.begin(), tickets.end(),
                                   [&](const Ticket& candidate) { return candidate.text == ticketRequest->ticket; });
  const User* user = ticket == tickets.end() ? nullptr : findUser(request.farm, ticket->domain, ticket->userName);
  if (user == nullptr) return refusal(request.message.name, kUnknownTicket);

  AnswerWriter writer = answerTo(request.message.name, request.coding);
  if (request.message.name == "authenticateticket") writer.add("ticket", encipheredCredentials(*user, *ticketRequest));
  return bodyOf(writer);
}

Body Conversation::farmProperties(const Request& request) {
  AnswerWriter writer = answerTo(request.message.name, request.coding);
  writer.add("farmname", request.farm.name);
  return bodyOf(writer);
}

Body Conversation::applicationList(const Request& request) {
  const std::pair key(request.logIn.user.groups, request.coding);
  {
    const std::lock_guard lock(mutex_);
    const auto found = applicationLists_.find(key);
    if (found != applicationLists_.end() && farm_.get() == &request.farm) return found->second;
  }

  AnswerWriter writer = answerTo(request.message.name, request.coding);
  for (const Application& application : request.farm.applications) {
    if (!isVisible(application, request.logIn.user)) continue;
    const pugi::xml_node element = writer.root().append_child("application");
    writer.add(element, "name", application.name);
    addProgram(writer, element, application);
    writer.addUnlessEmpty(element, "foldername", application.folder);
    if (application.icon) {
      writer.add(element, "largeicon", application.icon->large);
      writer.add(element, "smallicon", application.icon->small);
    }
    writer.add(element, "desktopshortcutlocation", std::to_string(application.desktopShortcutLocation));
  }
  const Body body = bodyOf(writer);
  const std::lock_guard lock(mutex_);
  if (farm_.get() == &request.farm) applicationLists_[key] = body;
  return body;
}

Body Conversation::launchApplication(const Request& request) {
  // In the form of the wire, since a name may not come through the single-byte coding whole.
  const std::string wanted = encode(request.coding, request.message.field("appname"));
  const auto& applications = request.farm.applications;
  const auto application = std::find_if(applications.begin(), applications.end(), [&](const Application& candidate) {
    return isVisible(candidate, request.logIn.user) && encode(request.coding, candidate.name) == wanted;
  });
  if (application == applications.end()) return refusal(request.message.name, kUnknownApplication);
  if (application->refusal) return refusal(request.message.name, *application->refusal);

  AnswerWriter writer = answerTo(request.message.name, request.coding);
  addProgram(writer, writer.root(), *application);
  addElements(writer, writer.root(), kLaunchElements, application->launch);
  return bodyOf(writer);
}

Body Conversation::connectorInfo(const Request& request) {
  if (request.farm.capabilities.value_or(0) & kCapabilityConnectorInfoNeedsLogIn &&
      request.message.field("cookie").empty()) {
    return refusal(request.message.name, kUnknownCookie);
  }
  AnswerWriter writer = answerTo(request.message.name, request.coding);
  writer.add("config-status", configurationStatus(request.farm.configuration, request.message));
  if (const auto& configuration = request.farm.configuration) {
    writer.add("config-path", configuration->path);
    writer.add("config-guid", configuration->guid);
    writer.add("config-timestamp", configuration->timestamp);
  }
  const auto& update = request.farm.connectorUpdate;
  const bool older = update && isOlder(request.message.field("connectorinfo/connectorversion"), update->minVersion);
  writer.add("connector-status", older ? 2 : 1);
  if (update) {
    writer.add("connector-options", update->options);
    writer.add("connector-min-version", update->minVersion);
    writer.add("connector-install-location", update->installLocation);
  }
  return bodyOf(writer);
}

Body Conversation::sessionList(const Request& request) {
  const User& user = request.logIn.user;
  AnswerWriter writer = answerTo(request.message.name, request.coding);
  for (const Session& session : request.farm.sessions) {
    const auto textOf = [&](const char* element) {
      const auto found = session.find(element);
      return found == session.end() ? std::string() : found->second;
    };
    if (!equalsIgnoringCase(textOf("uname"), user.name) || !equalsIgnoringCase(textOf("domain"), user.domain)) continue;
    addElements(writer, writer.root().append_child("session"), kSessionElements, session);
  }
  return bodyOf(writer);
}

}  // namespace orvane::demo
