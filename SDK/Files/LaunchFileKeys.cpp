#include "Files/LaunchFileKeys.h"

#include <algorithm>
#include <array>

namespace orvane {

namespace {

using Record = OvSettingsData;

constexpr LaunchFileKey kLaunchFileKeys[] = {
    {"application", &Record::application, Written::kIfSet},
    {"full address", &Record::computer, Written::kWithoutApplication},
    {"connectortype", &Record::connector_type, Written::kIfSet},
    {"websitename", &Record::web_site_name, Written::kIfSet},
    {"locale", &Record::connector_locale, Written::kIfSet},
    {"protocol", &Record::protocol, Written::kIfSet},
    {"domain", &Record::domain, Written::kIfSet},
    {"username", &Record::username, Written::kIfSet},
    {"password", &Record::password, Written::kIfSet, ValueForm::kPassword},
    {"ticket", &Record::ticket, Written::kIfSet},
    {"enablesso", &Record::enable_sso, Written::kAlways},
    {"enablekerberos", &Record::enable_kerberos, Written::kAlways},
    {"screen mode id", &Record::full_screen, Written::kAlways, ValueForm::kScreenMode},
    {"desktopwidth", &Record::desktop_width, Written::kAlways},
    {"desktopheight", &Record::desktop_height, Written::kAlways},
    {"session bpp", &Record::session_bits_per_pixel, Written::kAlways},
    {"displayconnectionbar", &Record::display_connection_bar, Written::kAlways},
    {"pinconnectionbar", &Record::pin_connection_bar, Written::kAlways},
    {"spanmonitors", &Record::span_monitors, Written::kAlways, ValueForm::kSpanMonitors},
    {"smartsizing", &Record::smart_sizing, Written::kAlways},
    {"audiomode", &Record::audio_mode, Written::kAlways},
    {"keyboardhook", &Record::keyboard_hook, Written::kAlways},
    {"redirectclipboard", &Record::redirect_clipboard, Written::kAlways},
    {"redirectdrives", &Record::redirect_drives, Written::kAlways},
    {"redirectprinters", &Record::redirect_printers, Written::kAlways},
    {"redirectcomports", &Record::redirect_com_ports, Written::kAlways},
    {"redirectsmartcards", &Record::redirect_smartcards, Written::kAlways},
    {"redirecthandhelds", &Record::redirect_usb, Written::kAlways},
    {"redirectmicrophone", &Record::redirect_microphone, Written::kAlways},
    {"redirectuniversalprinters", &Record::redirect_universal_printers, Written::kAlways},
    {"drivestoredirect", &Record::drives_to_redirect, Written::kIfSet},
    {"alternate shell", &Record::program_full_path, Written::kIfSet, ValueForm::kEnciphered},
    {"shell working directory", &Record::program_working_dir, Written::kIfSet},
    {"seamless", &Record::seamless, Written::kAlways},
    {"connection type", &Record::connection_type, Written::kAlways},
    {"disable wallpaper", &Record::enable_wallpaper, Written::kAlways, ValueForm::kInverted},
    {"disable full window drag", &Record::enable_full_window_drag, Written::kAlways, ValueForm::kInverted},
    {"disable menu anims", &Record::enable_animation, Written::kAlways, ValueForm::kInverted},
    {"disable themes", &Record::enable_themes, Written::kAlways, ValueForm::kInverted},
    {"bitmapcachepersistenable", &Record::enable_bitmap_caching, Written::kAlways},
    {"enabledesktopcomposition", &Record::enable_desktop_composition, Written::kAlways},
    {"enablefontsmoothing", &Record::enable_font_smoothing, Written::kAlways},
    {"bitmapacceleration", &Record::enable_bitmap_acceleration, Written::kAlways},
    {"localtextecho", &Record::enable_local_text_echo, Written::kAlways},
    {"multimediaredirection", &Record::enable_multimedia_redirection, Written::kAlways},
    {"flashredirection", &Record::enable_flash_redirection, Written::kAlways},
    {"autoreconnection enabled", &Record::enable_auto_reconnection, Written::kAlways},
    {"compression", &Record::compression, Written::kAlways},
    {"encryption", &Record::encryption, Written::kAlways},
    {"connecttoconsole", &Record::connect_to_console, Written::kIfSet},
    {"connectingtext", &Record::connecting_text, Written::kIfSet},
    {"servername", &Record::server_name, Written::kIfSet},
    {"serveraddr", &Record::server_addr, Written::kIfSet},
    {"sslgateway", &Record::ssl_gateway, Written::kIfSet},
    {"useproxy", &Record::use_proxy, Written::kAlways},
    {"proxyserver", &Record::proxy_server, Written::kWithProxy},
    {"proxybypass", &Record::proxy_bypass, Written::kWithProxy},
    {"apptype", &Record::app_type, Written::kIfSet},
    {"farmname", &Record::farm_name, Written::kIfSet},
    {"llmprotocol", &Record::broker_protocol, Written::kWithServers},
    {"llmtcpport", &Record::broker_tcp_port, Written::kWithServers},
    {"llmservers", &Record::broker_servers, Written::kWithServers, ValueForm::kUnescaped},
    {"llmenablenat", &Record::broker_enable_nat, Written::kWithServers, ValueForm::kZeroOrOne},
    {"dnaproxy", &Record::dna_proxy, Written::kIfSet},
    {"deletefile", &Record::delete_file, Written::kIfSet},
    {"editable", &Record::editable, Written::kAlways, ValueForm::kAlwaysOne},
    // What only other programs write.
    {"credentialslogo", &Record::credentials_logo},
    {"devicestoredirect", &Record::devices_to_redirect},
    {"enabledomain", &Record::enable_domain},
    {"forceupn", &Record::force_upn},
    {"gatewaycredentialssource", &Record::gateway_credentials_source},
    {"gatewayhostname", &Record::gateway_hostname},
    {"gatewayprofileusagemethod", &Record::gateway_profile_usage_method},
    {"gatewayusagemethod", &Record::gateway_usage_method},
    {"loadbalanceinfo", &Record::load_balance_info},
    {"prompt for credentials on client", &Record::prompt_for_credentials},
    {"promptcredentialonce", &Record::prompt_credential_once},
    {"redirectposdevices", &Record::redirect_pos_devices},
    {"server port", &Record::server_port},
    {"session sharing", &Record::session_sharing},
    {"url", &Record::url, Written::kNever, ValueForm::kAddress},
};

constexpr char lowerCase(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

constexpr bool precedes(std::string_view left, std::string_view right) {
  return std::ranges::lexicographical_compare(left, right, {}, lowerCase, lowerCase);
}

constexpr std::string_view nameOf(const LaunchFileKey* key) { return key->name; }

// A foreign document may have millions of lines: each is looked up in a few comparisons.
constexpr auto kKeysByName = [] {
  std::array<const LaunchFileKey*, std::size(kLaunchFileKeys)> keys{};
  std::ranges::transform(kLaunchFileKeys, keys.begin(), [](const LaunchFileKey& key) { return &key; });
  std::ranges::sort(keys, precedes, nameOf);
  return keys;
}();
static_assert(std::ranges::adjacent_find(kKeysByName, std::ranges::equal_to{}, nameOf) == kKeysByName.end());

}  // namespace

std::span<const LaunchFileKey> launchFileKeys() { return kLaunchFileKeys; }

const LaunchFileKey* findLaunchFileKey(std::string_view name) {
  const auto place = std::ranges::lower_bound(kKeysByName, name, precedes, nameOf);
  return place != kKeysByName.end() && !precedes(name, nameOf(*place)) ? *place : nullptr;
}

}  // namespace orvane
