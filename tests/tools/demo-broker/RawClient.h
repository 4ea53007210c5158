#pragma once

#include <pugixml.hpp>
#include <string>

#include <httplib.h>

#include "Crypto/crypto.h"
#include "demo-broker/DemoBroker.h"

/// Requests as text, so that what the broker makes of them doesn't depend on any client of ours.

inline httplib::Client clientOf(const orvane::demo::DemoBroker& broker) {
  httplib::Client client(broker.url());
  client.enable_server_certificate_verification(false);
  client.set_read_timeout(20);
  client.set_tcp_nodelay(true);
  client.set_keep_alive(true);
  return client;
}

inline std::string passwordField(const char* password) {
  char enciphered[513] = "";
  crypto_encrypt_password(password, enciphered, sizeof enciphered);
  return enciphered;
}

inline std::string logInRequest(const char* domain, const char* user, const char* password, const char* more = "") {
  return std::string("<authenticate-req><domain>") + domain + "</domain><username>" + user + "</username><password>" +
         passwordField(password) + "</password>" + more + "</authenticate-req>";
}

inline std::string cookieRequest(const std::string& message, const std::string& cookie, const std::string& more = "") {
  return "<" + message + "-req><cookie>" + cookie + "</cookie>" + more + "</" + message + "-req>";
}

/// Posts `message`; the answer's root, or an empty node if there was no answer of status 200.
inline pugi::xml_node post(httplib::Client& client, const std::string& message, pugi::xml_document& answer,
                           const std::string& path = "/") {
  answer.reset();
  const httplib::Result result = client.Post(path, message, "text/xml");
  if (result && result->status == 200) answer.load_string(result->body.c_str());
  return answer.document_element();
}

inline std::string logIn(httplib::Client& client, const std::string& request) {
  pugi::xml_document answer;
  return post(client, request, answer).child_value("cookie");
}
