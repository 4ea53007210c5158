#include "FarmFile.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "EmbeddedFiles.h"
#include "IconStrings.h"
#include "Support/FileReplacement.h"

namespace orvane::demo {
namespace {

constexpr std::string_view kRequests[] = {"brokerinfo",         "authenticate",      "validateticket",
                                          "authenticateticket", "getfarmproperties", "getapplicationlist",
                                          "launchapplication",  "getconnectorinfo",  "getsessionlist"};

class FarmParser {
 public:
  FarmParser(const FarmFileText& file, const FileReader& readFile) : file_(file), readFile_(readFile) {}

  FarmDescription parse();

 private:
  struct Row {
    const char* element;
    void (FarmParser::*read)(ElementReader&);
  };
  static const Row kRows[];

  void readCapabilities(ElementReader& reader);
  void readCookies(ElementReader& reader);
  void readUser(ElementReader& reader);
  void readPolicies(ElementReader& reader);
  void readLaunch(ElementReader& reader);
  void readFolder(ElementReader& reader);
  void readApplication(ElementReader& reader);
  void readSession(ElementReader& reader);
  void readTicket(ElementReader& reader);
  void readConfiguration(ElementReader& reader);
  void readConnectorUpdate(ElementReader& reader);
  void readServedFile(ElementReader& reader);
  void readFault(ElementReader& reader);

  template <typename Function>
  void forEachChild(pugi::xml_node parent, const Function& function);
  std::optional<Refusal> readRefusal(ElementReader& reader);
  std::map<std::string, std::string> readLaunchElements(ElementReader& reader);
  std::shared_ptr<const Icon> icon(ElementReader& reader);

  const FarmFileText& file_;
  const FileReader& readFile_;
  FarmDescription farm_;
  std::string iconFolder_;
  std::map<std::string, std::shared_ptr<const Icon>> icons_;

  // What an application takes over from what stands around and above it.
  std::map<std::string, std::string> launch_;
  std::string folder_;
  std::set<std::string> groups_;
};

const FarmParser::Row FarmParser::kRows[] = {
    {"capabilities", &FarmParser::readCapabilities},
    {"cookies", &FarmParser::readCookies},
    {"user", &FarmParser::readUser},
    {"policies", &FarmParser::readPolicies},
    {"launch", &FarmParser::readLaunch},
    {"folder", &FarmParser::readFolder},
    {"application", &FarmParser::readApplication},
    {"session", &FarmParser::readSession},
    {"ticket", &FarmParser::readTicket},
    {"configuration", &FarmParser::readConfiguration},
    {"connector-update", &FarmParser::readConnectorUpdate},
    {"file", &FarmParser::readServedFile},
    {"fault", &FarmParser::readFault},
};

template <typename Function>
void FarmParser::forEachChild(pugi::xml_node parent, const Function& function) {
  for (const pugi::xml_node child : parent.children()) {
    if (child.type() == pugi::node_element) {
      function(child);
    } else if (child.type() == pugi::node_pcdata) {
      const auto blanks = static_cast<ptrdiff_t>(std::strspn(child.value(), " \t\r\n"));
      failAt(file_, child.offset_debug() + blanks, std::string("text has no meaning in <") + parent.name() + ">");
    }
  }
}

FarmDescription FarmParser::parse() {
  pugi::xml_document document;
  const pugi::xml_parse_result result = document.load_buffer(file_.text.data(), file_.text.size());
  if (!result) failAt(file_, result.offset, result.description());
  const pugi::xml_node root = document.document_element();
  ElementReader reader(file_, root);
  if (std::string_view(root.name()) != "farm") reader.fail("the root is not <farm>");
  farm_.name = reader.requiredText("name");
  farm_.anonymousAllowed = reader.yesOrNo("anonymous", false);
  iconFolder_ = reader.text("icons");
  reader.finish();

  forEachChild(root, [this](pugi::xml_node child) {
    const auto row = std::find_if(std::begin(kRows), std::end(kRows), [&](const Row& candidate) {
      return std::string_view(candidate.element) == child.name();
    });
    ElementReader childReader(file_, child);
    if (row == std::end(kRows)) childReader.fail(std::string("<farm> holds no <") + child.name() + ">");
    (this->*row->read)(childReader);
    childReader.finish();
  });
  return std::move(farm_);
}

void FarmParser::readCapabilities(ElementReader& reader) {
  const int bits = (reader.yesOrNo("connector-info", true) ? kCapabilityConnectorInfo : 0) |
                   (reader.yesOrNo("log-in-first", false) ? kCapabilityConnectorInfoNeedsLogIn : 0) |
                   (reader.yesOrNo("utf8", true) ? kCapabilityUtf8 : 0);
  farm_.capabilities = reader.yesOrNo("announced", true) ? std::optional(bits) : std::nullopt;
}

void FarmParser::readCookies(ElementReader& reader) { farm_.cookieUses = reader.requiredNumber("uses"); }

std::optional<Refusal> FarmParser::readRefusal(ElementReader& reader) {
  const Refusal refusal = {reader.number("errorcode", 0), reader.text("errortext")};
  return refusal.code == 0 ? std::nullopt : std::optional(refusal);
}

void FarmParser::readUser(ElementReader& reader) {
  User user;
  user.domain = reader.text("domain");
  user.name = reader.requiredText("name");
  user.password = reader.text("password");
  user.groups = reader.words("groups");
  user.refusal = readRefusal(reader);
  farm_.users.push_back(std::move(user));
}

void FarmParser::readPolicies(ElementReader& reader) {
  for (const std::string_view element : kPolicyElements) {
    const std::string name(element);
    if (reader.has(name.c_str())) farm_.policies.emplace_back(name, reader.text(name.c_str()));
  }
}

std::map<std::string, std::string> FarmParser::readLaunchElements(ElementReader& reader) {
  std::map<std::string, std::string> elements = reader.anyOf(kLaunchElements);
  elements.insert(launch_.begin(), launch_.end());
  return elements;
}

void FarmParser::readLaunch(ElementReader& reader) { launch_ = readLaunchElements(reader); }

void FarmParser::readFolder(ElementReader& reader) {
  const auto launchOutside = launch_;
  folder_ = reader.requiredText("name");
  groups_ = reader.words("groups");
  launch_ = readLaunchElements(reader);
  forEachChild(reader.element(), [this](pugi::xml_node child) {
    ElementReader childReader(file_, child);
    if (std::string_view(child.name()) != "application") {
      childReader.fail(std::string("<folder> holds no <") + child.name() + ">");
    }
    readApplication(childReader);
    childReader.finish();
  });
  folder_.clear();
  groups_.clear();
  launch_ = launchOutside;
}

std::shared_ptr<const Icon> FarmParser::icon(ElementReader& reader) {
  const std::string name = reader.text("icon");
  if (name.empty()) return nullptr;
  std::shared_ptr<const Icon>& icon = icons_[name];
  if (icon) return icon;

  const std::string path = (std::filesystem::path(iconFolder_) / (name + ".png")).string();
  const std::optional<std::string> png = readFile_(path);
  if (!png) reader.fail("the icon " + path + " can't be read");
  try {
    icon = std::make_shared<const Icon>(iconFromPng(*png));
  } catch (const std::runtime_error& error) {
    reader.fail(path + ": " + error.what());
  }
  return icon;
}

void FarmParser::readApplication(ElementReader& reader) {
  Application application;
  application.name = reader.requiredText("name");
  application.shortcut = reader.text("shortcut");
  application.path = reader.text("path");
  application.arguments = reader.text("arguments");
  application.workingDirectory = reader.text("workingdir");
  application.folder = folder_;
  application.icon = icon(reader);
  application.showCommand = reader.number("showcmd", 0);
  application.type = reader.number("apptype", 1);
  application.desktopShortcutLocation = reader.number("desktopshortcutlocation", 0);
  application.groups = reader.words("groups");
  if (application.groups.empty()) application.groups = groups_;
  application.launch = readLaunchElements(reader);
  application.refusal = readRefusal(reader);
  farm_.applications.push_back(std::move(application));
}

void FarmParser::readSession(ElementReader& reader) {
  Session session = reader.anyOf(kSessionElements);
  if (session["uname"].empty()) reader.fail("<session> needs the attribute uname");
  farm_.sessions.push_back(std::move(session));
}

void FarmParser::readTicket(ElementReader& reader) {
  Ticket ticket = {reader.requiredText("text"), reader.text("domain"), reader.requiredText("user")};
  if (ticket.text.find(':') != std::string::npos) reader.fail("the text of a ticket can't hold a colon");
  const bool known = std::any_of(farm_.users.begin(), farm_.users.end(), [&](const User& user) {
    return user.domain == ticket.domain && user.name == ticket.userName;
  });
  if (!known) reader.fail("no user of this domain and name stands before the ticket");
  farm_.tickets.push_back(std::move(ticket));
}

void FarmParser::readConfiguration(ElementReader& reader) {
  Configuration configuration;
  configuration.guid = reader.requiredText("guid");
  configuration.timestamp = reader.text("timestamp");
  configuration.path = reader.requiredText("path");
  if (reader.has("status")) configuration.status = reader.requiredNumber("status");
  farm_.configuration = std::move(configuration);
}

void FarmParser::readConnectorUpdate(ElementReader& reader) {
  ConnectorUpdate update;
  update.minVersion = reader.requiredText("min-version");
  update.installLocation = reader.requiredText("install-location");
  update.options = reader.yesOrNo("required", false) ? 1 : 0;
  farm_.connectorUpdate = std::move(update);
}

void FarmParser::readServedFile(ElementReader& reader) {
  ServedFile file;
  file.path = reader.requiredText("path");
  if (file.path.front() == '/') file.path.erase(0, 1);
  if (reader.has("type")) file.contentType = reader.requiredText("type");
  if (reader.has("source")) {
    const std::string source = reader.requiredText("source");
    std::optional<std::string> content = readFile_(source);
    if (!content) reader.fail("the file " + source + " can't be read");
    file.content = std::move(*content);
  } else {
    file.content = reader.element().text().get();
  }
  file.fillIn = reader.yesOrNo("fill-in", false);
  file.encipher = reader.yesOrNo("encipher", false);
  farm_.files.push_back(std::move(file));
}

void FarmParser::readFault(ElementReader& reader) {
  Fault fault;
  const std::string kind = reader.requiredText("kind");
  const std::optional<Fault::Kind> known = faultKindOf(kind);
  if (!known) reader.fail("kind=\"" + kind + "\" is no kind of fault");
  fault.kind = *known;
  fault.request = reader.text("request");
  if (!fault.request.empty() && fault.request.front() != '/' &&
      std::find(std::begin(kRequests), std::end(kRequests), fault.request) == std::end(kRequests)) {
    reader.fail("request=\"" + fault.request + "\" is neither a message nor a path");
  }
  fault.nth = reader.number("nth", 1);
  fault.times = reader.text("times") == "always" ? 0 : reader.number("times", 1);
  if (fault.nth == 0 || (fault.times == 0 && reader.text("times") != "always")) reader.fail("a fault counts from 1");
  if (fault.kind == Fault::Kind::kCut) fault.number = reader.requiredNumber("bytes");
  if (fault.kind == Fault::Kind::kStatus) {
    fault.number = reader.requiredNumber("status");
    if (fault.number < 200 || fault.number > 599) reader.fail("a status lies between 200 and 599");
    fault.text = reader.text("location");
  }
  if (fault.kind == Fault::Kind::kErrorCode) {
    fault.number = reader.requiredNumber("errorcode");
    fault.text = reader.text("errortext");
  }
  farm_.faults.push_back(std::move(fault));
}

}  // namespace

FarmDescription parseFarm(const std::string& xml, const std::string& fileName, const FileReader& readNamedFile) {
  const FarmFileText file = {fileName, xml};
  return FarmParser(file, readNamedFile).parse();
}

FarmDescription loadFarmFile(const std::filesystem::path& file) {
  const std::optional<std::string> xml = readFile(file.string());
  if (!xml) throw FarmFileError(file.string() + ": the file can't be read");
  return parseFarm(*xml, file.string(),
                   [&](const std::string& name) { return readFile((file.parent_path() / name).string()); });
}

FarmDescription sampleFarm() {
  const auto embedded = [](const std::string& name) -> std::optional<std::string> {
    for (const EmbeddedFile& file : embeddedFiles()) {
      if (file.name == name) return std::string(file.content);
    }
    return std::nullopt;
  };
  return parseFarm(embedded("sample-farm.xml").value(), "sample-farm.xml", embedded);
}

}  // namespace orvane::demo
