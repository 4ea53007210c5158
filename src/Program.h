#pragma once

#include <memory>
#include <string>

namespace orvane {

/// The objects of the running program, built in the order in which they need each other. Main thread only, with a
/// QApplication.
class Program {
 public:
  struct Options {
    std::string executable{};        ///< of this process, an absolute path
    std::string addressToConnect{};  ///< stands in the field of the first page, if the program begins with that
    bool measuresMainLoop = false;   ///< writes the main loop's longest gap to the error output at the end
  };

  explicit Program(Options options);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  /// To be called in this order: a link or file before the start has finished is what caused it.
  void willFinishLaunching();
  void openAddress(const std::string& address, const std::string& activationToken);
  void didFinishLaunching();
  /// The user has started the program once more.
  void reopen(const std::string& activationToken);
  /// What the desktop asks for by name.
  void perform(const std::string& action, const std::string& activationToken);

  /// The main loop has ended: nothing more happens. Waits for nobody.
  void terminate();

 private:
  struct Parts;
  const std::unique_ptr<Parts> parts_;
  const Options options_;
};

}  // namespace orvane
