#include "Crypto/crypto.h"
#include "Files/LaunchFileReader.h"
#include "Files/OvSettings.h"
#include "RecordFields.h"
#include "Support/TemporaryFolder.h"

namespace {

using namespace std::string_literals;

RecordFields read(const std::string& document) {
  OvSettingsData* const record = ovsettings_new();
  orvane::readLaunchDocument(*record, document);
  RecordFields fields = fieldsOf(*record);
  ovsettings_free(record);
  return fields;
}

std::string enciphered256(const std::string& text) {
  char out[513];
  crypto_encrypt_password(text.c_str(), out, sizeof out);
  return out;
}

std::string enciphered1024(const std::string& text) {
  char out[2049];
  crypto_encrypt1024(text.c_str(), out, sizeof out);
  return out;
}

// The older form of a password: no block.
std::string shortPassword(std::string text) {
  crypto_encrypt(reinterpret_cast<unsigned char*>(text.data()), text.size());
  char out[256];
  crypto_bintohex(reinterpret_cast<const unsigned char*>(text.data()), text.size(), out, sizeof out);
  return out;
}

// A document, "|" for each line feed, and what it changes against the defaults: all other fields must be left alone.
using Cases = std::vector<std::pair<std::string, std::string>>;

void expectAll(const Cases& cases) {
  for (const auto& [document, changes] : cases) {
    EXPECT_EQ(read(linesOf(document)), with(defaultsAfterLoad(), changes)) << document;
  }
}

TEST(LaunchFileReader, TakesTextApartIntoLines) {
  const std::string value(4095 - strlen("domain:u:"), 'd');
  expectAll({
      {"", ""},
      {"\x7f\x45LF\x02\x01\x01||:::|", ""},
      {"domain:u:a|username:u:b", "domain=a"},
      {"domain:u:a\r|username:u:b\r|", "domain=a|username=b"},
      {"domain:u:a\rusername:u:b\r", "domain=a|username=b"},
      {" \t\v\f domain:u:a|| |  username:u:b|", "domain=a|username=b"},
      {"domain :u:a|", ""},
      {"domain:u: a b |", "domain= a b "},
      {"domain:u:a:b::c|", "domain=a:b::c"},
      {"domain:u::a|", "domain=:a"},
      {"::domain:::u:a|", "domain=a"},
      {"domain:u:|username:u|ticket|farmname::|", ""},
      {"domain:u:a\0b:c|username\0:u:b|ticket:u:t|"s, "domain=a|ticket=t"},
      {"DoMain:u:a|FULL ADDRESS:u:b|", "domain=a|computer=b"},
      {"domai:u:a|domainn:u:a|@domain:u:a|", ""},
      {"domain:u:" + value + "|", "domain=" + value},
      {"domain:u:" + value, ""},
      {"domain:u:" + value + "?username:u:b|", "domain=" + value + "|username=b"},
      {"domain:u:" + value + "?username:u:b", "domain=" + value},
  });
}

TEST(LaunchFileReader, StringsComeByTagAndTheFirstWins) {
  expectAll({
      {"username:u:a|username:u:b|", "username=a"},
      {"username:i:a|username:U:b|username:us:c|username:s:d|username:u:e|", "username=d"},
      {"full address:s:caf\xe9|", "computer=caf\xc3\xa9"},
      {"full address:u:caf\xe9|", "computer=caf\xe9"},
      {"connectortype:u:Mine|", "connector_type=Mine"},
      {"drivestoredirect:u:C|devicestoredirect:u:D|", "drives_to_redirect=C|devices_to_redirect=D"},
      {"llmservers:u:a%%%0a|llmservers:x:b%%%0a|", "broker_servers=b%%%0a"},
  });
}

TEST(LaunchFileReader, EscapesAreUndone) {
  const Cases cases = {{"50%%%0a", "50%\n"}, {"%0d%0A%41", "\r\nA"}, {"%%41", "%41"},        {"a%zzb", "a"},
                       {"%zz", ""},          {"a%4zb", "a\4b"},      {"a% 4b", "a\4b"},      {"a%", "a"},
                       {"a%4", "a\4"},       {"a%%%", "a%"},         {"%c3%e9", "\xc3\xe9"}, {"%00a", ""}};
  for (const auto& [escaped, plain] : cases) {
    EXPECT_EQ(read("ticket:u:" + escaped + "\nticket:u:later\n").at("ticket"), plain) << escaped;
    EXPECT_EQ(read("password:u:" + enciphered256(escaped) + "\n").at("password"), plain) << escaped;
  }
  EXPECT_EQ(read("ticket:s:%e9\n").at("ticket"), "\xc3\xa9");
}

TEST(LaunchFileReader, NumbersAndSwitches) {
  expectAll({
      {"desktopwidth:i:1|desktopwidth:i:2|", "desktop_width=2"},
      {"redirectdrives:x:1|", "redirect_drives=1"},
      {"redirectclipboard:i:abc|connection type:i:abc|", "redirect_clipboard=0|connection_type=0"},
      {"seamless:i: -7x|", "seamless=-7"},
      {"desktopwidth:i:4294967297|desktopheight:i:-99999999999999999999|",
       "desktop_width=2147483647|desktop_height=-2147483648"},
      {"enablesso:i:-3|", "enable_sso=1"},
      {"disable themes:i:0|disable wallpaper:i:1|disable menu anims:i:x|disable full window drag:i:-1|",
       "enable_themes=1|enable_animation=1"},
      {"screen mode id:i:2|", "full_screen=1"},
      {"screen mode id:i:2|screen mode id:i:3|", ""},
      {"spanmonitors:i:1|", "span_monitors=1"},
      {"seamless:i:1|spanmonitors:i:0|", "seamless=1|span_monitors=1"},
      {"spanmonitors:i:0|seamless:i:1|", "seamless=1"},
      {"seamless:i:-1|spanmonitors:i:0|", "seamless=-1"},
      {"llmenablenat:i:5|", "broker_enable_nat=1"},
      // Keys that are never written.
      {"session sharing:i:0|enabledomain:i:0|forceupn:i:1|editable:i:1|redirectposdevices:i:1|",
       "session_sharing=0|enable_domain=0|force_upn=1|editable=1|redirect_pos_devices=1"},
      {"prompt for credentials on client:i:1|promptcredentialonce:i:1|server port:i:3389|gatewayusagemethod:i:1|"
       "gatewayprofileusagemethod:i:2|gatewaycredentialssource:i:4|",
       "prompt_for_credentials=1|prompt_credential_once=1|server_port=3389|gateway_usage_method=1|"
       "gateway_profile_usage_method=2|gateway_credentials_source=4"},
      {"gatewayhostname:s:g|loadbalanceinfo:s:l|credentialslogo:s:c|",
       "gateway_hostname=g|load_balance_info=l|credentials_logo=c"},
  });
}

TEST(LaunchFileReader, EncipheredValues) {
  std::string damaged = enciphered256("secret");
  damaged[10] = damaged[10] == '0' ? '1' : '0';
  expectAll({
      {"password:u:" + enciphered256("se:cret") + "|", "password=se:cret"},
      {"password:u:" + shortPassword("0123456789") + "|", "password=0123456789"},
      {"password:s:" + enciphered256("\xe9") + "|", "password=\xc3\xa9"},
      {"password:i:" + enciphered256("secret") + "|", ""},
      {"password:u:" + damaged + "|password:u:" + enciphered256("late") + "|", "password="},
      {"password:u:" + enciphered256("a") + "00|", "password="},
      {"password:u:geheim|alternate shell:s:notepad.exe|url:u:http://a/|", "password=|program_full_path=|url="},
      {"alternate shell:u:" + enciphered1024("%%windir%%\\notepad.exe a%0ab") + "|",
       "program_full_path=%windir%\\notepad.exe a\nb"},
      {"url:u:" + enciphered1024("http://a/") + "|url:x:" + enciphered1024("http://b/%41%%") + "|",
       "url=http://b/%41%%"},
  });
}

TEST(LaunchFileReader, AContainerIsRecognisedByItsContentAlone) {
  const std::string text = "domain:u:a\nusername:u:b\n";
  EXPECT_EQ(read(orvane::encipheredContainer(text)), read(text));
  EXPECT_EQ(read(orvane::encipheredContainer("")), defaultsAfterLoad());
  EXPECT_EQ(read("OVL" + text), with(defaultsAfterLoad(), {{"username", "b"}}));
}

TEST(LaunchFileReader, ALoadReplacesTheWholeRecordAndLeavesTheBufferAlone) {
  OvSettings settings;
  settings.setDomain("old");
  settings.setPassword("old");
  settings.setSeamless(3);
  const std::string original = orvane::encipheredContainer("username:u:b%%\n");
  const std::string document = original;
  EXPECT_EQ(settings.loadOvlBuffer(document.data(), document.size()), 1);
  EXPECT_EQ(document, original);
  EXPECT_EQ(settings.getDomain(), nullptr);
  EXPECT_EQ(settings.getPassword(), nullptr);
  EXPECT_EQ(settings.getSeamless(), 0);
  EXPECT_STREQ(settings.getUsername(), "b%");
  EXPECT_EQ(settings.loadOvlBuffer(nullptr, 0), 1);
  EXPECT_EQ(settings.getUsername(), nullptr);
  EXPECT_EQ(settings.loadOvlBuffer(nullptr, 1), 0);
}

class LaunchFileLoad : public testing::Test {
 protected:
  bool exists() const { return std::filesystem::exists(path_); }

  const TemporaryFolder folder_;
  const std::string path_ = folder_.file("a.ovl");
  OvSettings settings_;
};

TEST_F(LaunchFileLoad, TheFileIsRemovedOnlyOnItsOwnDemand) {
  writeFile(path_, "username:u:b\n");
  EXPECT_EQ(settings_.loadOvlFile(path_.c_str()), 1);
  EXPECT_TRUE(exists());
  writeFile(path_, orvane::encipheredContainer("deletefile:i:1\nusername:u:c\n"));
  settings_.setUsername(path_.c_str());
  EXPECT_EQ(settings_.loadOvlFile(settings_.getUsername()), 1);
  EXPECT_FALSE(exists());
  EXPECT_STREQ(settings_.getUsername(), "c");
}

TEST_F(LaunchFileLoad, WhatCantBeReadFailsAndLeavesTheRecord) {
  writeFile(path_, "");
  settings_.setUsername("kept");
  for (const std::string& path : {path_, folder_.path().string(), folder_.file("missing")}) {
    EXPECT_EQ(settings_.loadOvlFile(path.c_str()), 0) << path;
  }
  EXPECT_EQ(settings_.loadOvlFile(nullptr), 0);
  EXPECT_STREQ(settings_.getUsername(), "kept");
  EXPECT_TRUE(exists());
}

}  // namespace
