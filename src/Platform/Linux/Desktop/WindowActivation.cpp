#include "Platform/Linux/Desktop/WindowActivation.h"

#include <QGuiApplication>
#include <QWidget>
#include <QWindow>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>

#include <xcb/xcb.h>

namespace orvane {
namespace {

// The X server, for what the toolkit doesn't say to it. No call waits for the server but those for atoms.
class XDesktop {
 public:
  explicit XDesktop(xcb_connection_t* connection)
      : connection_(connection), root_(xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root) {}

  void setProperty(xcb_window_t window, const char* property, const char* type, uint8_t format, uint32_t count,
                   const void* value) {
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, atom(property), atom(type), format, count, value);
  }

  // The switch to the window as the user has asked for it, which no window manager takes for an intrusion.
  void activate(xcb_window_t window, uint32_t time) {
    constexpr uint32_t kSourceIsTheUser = 2;
    xcb_client_message_event_t event = message(window, "_NET_ACTIVE_WINDOW", 32);
    event.data.data32[0] = kSourceIsTheUser;
    event.data.data32[1] = time;
    send(event, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
  }

  // Whoever shows that a program is starting shows it no more.
  void endStartup(xcb_window_t window, const std::string& token) {
    std::string text = "remove: ID=\"";
    for (const char character : token) {
      if (character == '"' || character == '\\') text += '\\';
      text += character;
    }
    text += '"';
    constexpr size_t kChunk = 20;
    xcb_client_message_event_t event = message(window, "_NET_STARTUP_INFO_BEGIN", 8);
    const xcb_atom_t goesOn = atom("_NET_STARTUP_INFO");
    for (size_t at = 0; at <= text.size(); at += kChunk) {  // the ending zero goes with it
      event.data = {};
      text.copy(reinterpret_cast<char*>(event.data.data8), kChunk, at);
      send(event, XCB_EVENT_MASK_PROPERTY_CHANGE);
      event.type = goesOn;
    }
  }

  void flush() { xcb_flush(connection_); }

 private:
  xcb_atom_t atom(const char* name) {
    const auto asked = xcb_intern_atom(connection_, 0, static_cast<uint16_t>(std::strlen(name)), name);
    xcb_intern_atom_reply_t* const reply = xcb_intern_atom_reply(connection_, asked, nullptr);
    const xcb_atom_t atom = reply != nullptr ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    free(reply);
    return atom;
  }
  xcb_client_message_event_t message(xcb_window_t window, const char* type, uint8_t format) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = format;
    event.window = window;
    event.type = atom(type);
    return event;
  }
  void send(const xcb_client_message_event_t& event, uint32_t mask) {
    xcb_send_event(connection_, 0, root_, mask, reinterpret_cast<const char*>(&event));
  }

  xcb_connection_t* const connection_;
  const xcb_window_t root_;
};

// When the user acted, by the X server's clock, which such a token ends with; 0 if it doesn't.
uint32_t timeOf(const std::string& token) {
  constexpr char kMark[] = "_TIME";
  const size_t mark = token.rfind(kMark);
  uint32_t time = 0;
  if (mark != std::string::npos) {
    std::from_chars(token.data() + mark + std::strlen(kMark), token.data() + token.size(), time);
  }
  return time;
}

void show(QWidget& window) {
  if (window.isMinimized()) window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.show();
  window.raise();
}

void activateOnX(XDesktop desktop, QWidget& window, const std::string& token) {
  const auto id = static_cast<xcb_window_t>(window.winId());
  const uint32_t time = timeOf(token);
  // Before it is shown: the window manager looks at these when it places the window.
  if (time != 0) desktop.setProperty(id, "_NET_WM_USER_TIME", "CARDINAL", 32, 1, &time);
  if (!token.empty()) {
    desktop.setProperty(id, "_NET_STARTUP_ID", "UTF8_STRING", 8, static_cast<uint32_t>(token.size()), token.data());
  }
  desktop.flush();
  show(window);
  window.activateWindow();  // for a desktop without a window manager
  desktop.activate(id, time);
  if (!token.empty()) desktop.endStartup(id, token);
  desktop.flush();
}

}  // namespace

void activateWindow(QWidget& window, const std::string& token) {
  auto* const x = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  // Platforms of the toolkit without a display may have the interface, but no connection.
  if (x != nullptr && x->connection() != nullptr) {
    activateOnX(XDesktop(x->connection()), window, token);
    return;
  }
  // The toolkit takes it from there with the next activation.
  if (!token.empty()) qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(token));
  show(window);
  window.activateWindow();
}

}  // namespace orvane
