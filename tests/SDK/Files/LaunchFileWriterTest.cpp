#include <cstring>

#include <sys/stat.h>

#include "Crypto/crypto.h"
#include "Files/OvSettings.h"
#include "RecordFields.h"
#include "Support/TemporaryFolder.h"

namespace {

class LaunchFileSave : public testing::Test {
 protected:
  // The text inside the file.
  std::string savedText() {
    EXPECT_EQ(settings_.saveOvlFile(path_.c_str()), 1);
    EXPECT_EQ(crypto_decrypt_file(path_.c_str()), 1);
    return contentOf(path_);
  }

  RecordFields reloaded() {
    EXPECT_EQ(settings_.saveOvlFile(path_.c_str()), 1);
    OvSettingsData* const record = ovsettings_new();
    EXPECT_EQ(ovsettings_load_ovl_file(record, path_.c_str()), 1);
    RecordFields fields = fieldsOf(*record);
    ovsettings_free(record);
    return fields;
  }

  const TemporaryFolder folder_;
  const std::string path_ = folder_.file("a.ovl");
  OvSettingsData* const record_ = ovsettings_new();
  OvSettings settings_{record_};
};

// Values as different from the defaults and from each other as the fields allow.
void fillEveryField(OvSettingsData& record) {
  int count = 0;
  orvane::forEachField(record, [&count](auto& field, auto defaultValue) {
    ++count;
    if constexpr (std::is_same_v<decltype(field), bool&>) {
      field = !defaultValue;
    } else if constexpr (std::is_same_v<decltype(field), int&>) {
      field = count % 2 ? count : -count;
    } else {
      orvane::assignText(field, (": 5" + std::to_string(count) + "%%0a \r\n\xc3\xa9\xe9:\x01").c_str());
    }
  });
  record.broker_enable_nat = 1;
}

TEST_F(LaunchFileSave, EveryFieldComesBackButForTheKnownLosses) {
  fillEveryField(*record_);
  settings_.setBrokerServers("a%\r\nb");
  const RecordFields none = defaultsAfterLoad();
  RecordFields expected = fieldsOf(*record_);
  for (const char* lost :
       {"session_sharing", "url", "credentials_logo", "devices_to_redirect", "enable_domain", "force_upn",
        "redirect_pos_devices", "prompt_for_credentials", "prompt_credential_once", "server_port", "load_balance_info",
        "gateway_hostname", "gateway_usage_method", "gateway_profile_usage_method", "gateway_credentials_source",
        "computer", "proxy_server", "proxy_bypass"}) {
    expected[lost] = none.at(lost);
  }
  expected["editable"] = "1";
  expected["broker_servers"] = "a%%%0d%0ab";
  EXPECT_EQ(reloaded(), expected);

  // Without what kept them from being written.
  const std::string address = settings_.getComputer();
  settings_.setApplication("");
  settings_.setUseProxy(true);
  expected = with(expected, {{"application", "(unset)"},
                             {"computer", address},
                             {"use_proxy", "1"},
                             {"proxy_server", settings_.getProxyServer()},
                             {"proxy_bypass", settings_.getProxyBypass()},
                             {"delete_file", "1"}});
  EXPECT_EQ(reloaded(), expected);
}

TEST_F(LaunchFileSave, TheLinesStandInTheirOrder) {
  fillEveryField(*record_);
#define OVSETTINGS_STRING(stem, Name, defaultValue) settings_.set##Name("my " #stem);
#define OVSETTINGS_BOOL(stem, Name, defaultValue)
#define OVSETTINGS_INT(stem, Name, defaultValue)
#include "Files/OvSettingsFields.def"
  settings_.setUseProxy(true);
  settings_.setPassword("50%off");
  settings_.setProgramFullPath("%windir%\\a\nb.exe");
  std::string text = savedText();

  for (const auto& [start, digits, plain] :
       {std::tuple{"\npassword:u:", 512u, "50%%off"}, {"\nalternate shell:u:", 2048u, "%%windir%%\\a%0ab.exe"}}) {
    const size_t position = text.find(start) + strlen(start);
    const std::string value = text.substr(position, text.find('\n', position) - position);
    EXPECT_EQ(value.size(), digits);
    EXPECT_EQ(value.find_first_not_of("0123456789ABCDEF"), std::string::npos);
    char deciphered[1024];
    (digits == 512 ? crypto_decrypt256 : crypto_decrypt1024)(value.c_str(), deciphered, sizeof deciphered);
    EXPECT_STREQ(deciphered, plain);
    text.replace(position, value.size(), "(enciphered)");
  }
  EXPECT_EQ(
      text,
      linesOf(
          "application:u:my application|connectortype:u:my connector_type|websitename:u:my web_site_name|"
          "locale:u:my connector_locale|protocol:i:67|domain:u:my domain|username:u:my username|"
          "password:u:(enciphered)|ticket:u:my ticket|enablesso:i:1|enablekerberos:i:1|screen mode id:i:2|"
          "desktopwidth:i:-12|desktopheight:i:13|session bpp:i:-14|displayconnectionbar:i:0|pinconnectionbar:i:0|"
          "spanmonitors:i:1|smartsizing:i:1|audiomode:i:19|keyboardhook:i:-20|redirectclipboard:i:0|redirectdrives:i:1|"
          "redirectprinters:i:1|redirectcomports:i:1|redirectsmartcards:i:1|redirecthandhelds:i:1|"
          "redirectmicrophone:i:1|redirectuniversalprinters:i:1|drivestoredirect:u:my drives_to_redirect|"
          "alternate shell:u:(enciphered)|shell working directory:u:my program_working_dir|seamless:i:33|"
          "connection type:i:-34|disable wallpaper:i:0|disable full window drag:i:0|disable menu anims:i:0|"
          "disable themes:i:0|bitmapcachepersistenable:i:1|enabledesktopcomposition:i:1|enablefontsmoothing:i:1|"
          "bitmapacceleration:i:1|localtextecho:i:1|multimediaredirection:i:1|flashredirection:i:1|"
          "autoreconnection enabled:i:0|compression:i:0|encryption:i:0|connecttoconsole:i:1|"
          "connectingtext:u:my connecting_text|servername:u:my server_name|serveraddr:u:my server_addr|"
          "sslgateway:u:my ssl_gateway|useproxy:i:1|proxyserver:u:my proxy_server|proxybypass:u:my proxy_bypass|"
          "apptype:i:55|farmname:u:my farm_name|llmprotocol:i:47|llmtcpport:i:-48|llmservers:u:my broker_servers|"
          "llmenablenat:i:1|dnaproxy:u:my dna_proxy|deletefile:i:1|editable:i:1|"));
}

TEST_F(LaunchFileSave, WhatIsUnsetOrEmptyHasNoLine) {
  const std::string bare = linesOf(
      "connectortype:u:Windows Connector (OVTSC)|enablesso:i:0|enablekerberos:i:0|screen mode id:i:1|"
      "desktopwidth:i:0|desktopheight:i:0|session bpp:i:0|displayconnectionbar:i:1|pinconnectionbar:i:1|"
      "spanmonitors:i:0|smartsizing:i:0|audiomode:i:0|keyboardhook:i:0|redirectclipboard:i:1|redirectdrives:i:0|"
      "redirectprinters:i:0|redirectcomports:i:0|redirectsmartcards:i:0|redirecthandhelds:i:0|"
      "redirectmicrophone:i:0|redirectuniversalprinters:i:0|drivestoredirect:u:*|seamless:i:0|connection type:i:6|"
      "disable wallpaper:i:1|disable full window drag:i:1|disable menu anims:i:1|disable themes:i:1|"
      "bitmapcachepersistenable:i:0|enabledesktopcomposition:i:0|enablefontsmoothing:i:0|bitmapacceleration:i:0|"
      "localtextecho:i:0|multimediaredirection:i:0|flashredirection:i:0|autoreconnection enabled:i:1|"
      "compression:i:1|encryption:i:1|useproxy:i:1|editable:i:1|");
  settings_.setBrokerTcpPort(443);
  settings_.setBrokerEnableNAT(1);
  EXPECT_EQ(savedText(), bare);
  orvane::forEachText(*record_, [](char*& field) {
    if (!field) orvane::assignText(field, "");
  });
  EXPECT_EQ(savedText(), "full address:u:\n" + bare);
  settings_.setConnectorType("");
  EXPECT_EQ(reloaded(), with(defaultsAfterLoad(), {{"editable", "1"}}));
}

TEST_F(LaunchFileSave, WhatIsTooLongToBeReadBackIsRefusedWithoutAWrite) {
  struct {
    std::string key;
    void (*set)(OvSettingsData*, const char*);
    size_t length;  // of the longest value that fits
    char last;
  } const cases[] = {
      {"password", ovsettings_set_password, 253, '%'},
      {"alternate shell", ovsettings_set_program_full_path, 1020, '\n'},
      {"domain", ovsettings_set_domain, 4095 - strlen("domain:u:") - 2, '\r'},
      {"llmservers", ovsettings_set_broker_servers, 4095 - strlen("llmservers:u:"), 's'},
  };
  for (const auto& [key, set, length, last] : cases) {
    std::string longest(length, 'x');
    longest.back() = last;
    set(record_, longest.c_str());
    const RecordFields fits =
        with(fieldsOf(*record_), {{"connector_type", "Windows Connector (OVTSC)"}, {"editable", "1"}});
    EXPECT_EQ(reloaded(), fits) << key;

    const std::string before = contentOf(path_);
    set(record_, ("x" + longest).c_str());
    EXPECT_EQ(settings_.saveOvlFile(path_.c_str()), 0) << key;
    EXPECT_EQ(contentOf(path_), before) << key;
    set(record_, nullptr);
  }
}

TEST_F(LaunchFileSave, TheFileIsPrivateAndAFailureLeavesWhatWasThere) {
  settings_.setTicket("clear text");
  writeFile(path_, "old");
  chmod(path_.c_str(), 0644);
  EXPECT_EQ(settings_.saveOvlFile(path_.c_str()), 1);
  EXPECT_EQ(modeOf(path_), 0600u);
  EXPECT_EQ(contentOf(path_).find("clear text"), std::string::npos);

  std::filesystem::create_directories(folder_.file("folder/inside"));
  for (const std::string& path : {folder_.file("folder"), folder_.file("missing/a.ovl"), std::string()}) {
    EXPECT_EQ(settings_.saveOvlFile(path.c_str()), 0) << path;
  }
  EXPECT_EQ(settings_.saveOvlFile(nullptr), 0);
  EXPECT_TRUE(std::filesystem::exists(folder_.file("folder/inside")));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.path()), {}), 2);
}

TEST_F(LaunchFileSave, SeveralThreadsSaveAndLoadAtTheSameTime) {
  std::vector<std::thread> threads;
  for (int number = 0; number < 4; ++number) {
    threads.emplace_back([this, number] {
      const std::string path = folder_.file(std::to_string(number));
      OvSettings settings;
      for (int round = 0; round < 20; ++round) {
        const std::string secret = std::to_string(number * 1000 + round) + "%\n";
        settings.setPassword(secret.c_str());
        ASSERT_EQ(settings.saveOvlFile(path.c_str()), 1);
        settings.setPassword(nullptr);
        ASSERT_EQ(settings.loadOvlFile(path.c_str()), 1);
        ASSERT_EQ(settings.getPassword(), secret);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

}  // namespace
