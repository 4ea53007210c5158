#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "FarmDescription.h"
#include "Messages.h"

namespace orvane::demo {

/// The broker's side of all exchanges: messages in, bodies of answers out. Any thread, several at a time.
class Conversation {
 public:
  explicit Conversation(FarmDescription farm);

  using Body = std::shared_ptr<const std::string>;

  /// How answers are coded at the moment.
  Coding coding() const;
  Body brokerInfo() const;
  /// The answer to a message; null if it isn't one of the broker's.
  Body answer(const Message& message);
  /// An answer to `message` (or `brokerinfo`) that holds nothing but the refusal.
  Body refusal(const std::string& message, const Refusal& refusal) const;
  /// The file to be had under `path`, which has no leading slash.
  std::optional<ServedFile> file(const std::string& path) const;

  void expireCookies();
  void changeFarm(const std::function<void(FarmDescription&)>& change);

 private:
  struct LogIn {
    User user;  // without the password
    int usesLeft = 0;
  };
  struct Request {
    const Message& message;
    const FarmDescription& farm;
    Coding coding;
    LogIn logIn;  // of a message that carries a good cookie
  };

  std::shared_ptr<const FarmDescription> farm() const;
  /// Takes one use off the cookie. Nothing if it is unknown.
  std::optional<LogIn> useCookie(const std::string& cookie);

  Body authenticate(const Request& request);
  Body exchangeTicket(const Request& request);
  Body farmProperties(const Request& request);
  Body applicationList(const Request& request);
  Body launchApplication(const Request& request);
  Body connectorInfo(const Request& request);
  Body sessionList(const Request& request);

  struct Handler {
    const char* message;
    bool needsCookie;
    Body (Conversation::*answer)(const Request&);
  };
  static const Handler kHandlers[];

  mutable std::mutex mutex_;
  std::shared_ptr<const FarmDescription> farm_;
  std::map<std::string, LogIn> cookies_;
  // The list is the one large answer: it depends only on the user's groups and the coding.
  std::map<std::pair<std::set<std::string>, Coding>, Body> applicationLists_;
};

}  // namespace orvane::demo
