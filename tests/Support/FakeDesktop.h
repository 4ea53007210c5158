#pragma once

#include <algorithm>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "Platform/ApplicationProcess.h"
#include "Platform/Autostart.h"
#include "Platform/ModifierKeys.h"
#include "Platform/Screens.h"
#include "Platform/StatusArea.h"
#include "Platform/UserNotifications.h"
#include "Platform/WindowHost.h"
#include "PumpedQueue.h"

/// A desktop that writes down what is done to it, in order. Main thread only.
///
/// The acts: "show main", "hide main", "front main", "deminiaturize main", "sheet progress", "end sheet progress",
/// "session credentials", "end session credentials", "run alert", "run alert on main", "stop alert", "show about",
/// "hide about"; "policy 1", "unhide", "activate", "terminate"; "notify TITLE: TEXT"; "add item", "remove item",
/// "tool tip TEXT", "picture NAME", "alternate picture NAME"; "autostart 1".
class FakeDesktop : public orvane::WindowHost,
                    public orvane::ApplicationProcess,
                    public orvane::UserNotifications,
                    public orvane::StatusArea,
                    public orvane::ModifierKeys,
                    public orvane::Screens,
                    public orvane::Autostart {
 public:
  using Window = orvane::AuxiliaryWindow;

  /// @param mainQueue whose work a modal run goes on with.
  explicit FakeDesktop(std::shared_ptr<PumpedQueue> mainQueue) : mainQueue_(std::move(mainQueue)) {}

  /// Called at the begin of each modal run, to do what the user does.
  std::function<void(Window)> duringModalRun{};
  bool isMiniaturized = false;
  uint32_t heldKeys = 0;
  Size area{1600, 900};
  bool isMainWindowShown = false;
  bool isTerminated = false;
  bool startsAtLogin = false;
  orvane::UserNotificationsDelegate* notificationsDelegate = nullptr;

  /// What was done since the last call.
  std::vector<std::string> takeActs() { return std::exchange(acts_, {}); }
  const std::vector<std::string>& acts() const { return acts_; }
  bool isShown(Window window) const { return shown_.contains(window); }
  bool isAnyModal() const { return modalWindow().has_value(); }

  void showMainWindow() override { act("show main"), isMainWindowShown = true; }
  void hideMainWindow() override { act("hide main"), isMainWindowShown = false; }
  void bringMainWindowToFront() override { act("front main"), isMainWindowShown = true; }
  bool isMainWindowMiniaturized() const override { return isMiniaturized; }
  void deminiaturizeMainWindow() override { act("deminiaturize main"), isMiniaturized = false; }

  void beginSheet(Window window) override {
    act("sheet ", window);
    if (sheet_) ADD_FAILURE() << "A second sheet over " << name(*sheet_);
    sheet_ = window;
    shown_.insert(window);
  }
  void endSheet(Window window) override {
    act("end sheet ", window);
    if (sheet_ != window) ADD_FAILURE() << name(window) << " is not the sheet";
    sheet_.reset();
  }
  std::optional<Window> attachedSheet() const override { return sheet_; }

  void beginModalSession(Window window) override {
    act("session ", window);
    modal_.push_back({window, true});
    shown_.insert(window);
  }
  void endModalSession(Window window) override {
    act("end session ", window);
    modal_.remove_if([&](const Modal& modal) { return modal.isSession && modal.window == window; });
  }
  void runModal(Window window, orvane::WindowParent parent) override {
    act("run ", window, parent == orvane::WindowParent::kMainWindow ? " on main" : "");
    if (std::ranges::count(modal_, window, &Modal::window) != 0) ADD_FAILURE() << name(window) << " is modal already";
    const auto run = modal_.insert(modal_.end(), {window, false});
    shown_.insert(window);
    if (duringModalRun) duringModalRun(window);
    if (!mainQueue_->pumpUntil([&] { return run->isStopped; })) {
      ADD_FAILURE() << "Nobody ended the modal run of " << name(window);
      stopModal(window);
    }
    modal_.erase(run);
  }
  void stopModal(Window window) override {
    const auto run = std::ranges::find_if(
        modal_, [&](const Modal& modal) { return !modal.isSession && !modal.isStopped && modal.window == window; });
    if (run == modal_.end()) return;
    act("stop ", window);
    run->isStopped = true;
    shown_.erase(window);
  }
  std::optional<Window> modalWindow() const override {
    const auto modal = std::find_if(modal_.rbegin(), modal_.rend(), std::not_fn(&Modal::isStopped));
    return modal == modal_.rend() ? std::nullopt : std::optional(modal->window);
  }

  void show(Window window) override {
    act("show ", window);
    shown_.insert(window);
  }
  void hide(Window window) override {
    act("hide ", window);
    shown_.erase(window);
  }

  void setActivationPolicy(ActivationPolicy policy) override { act("policy " + std::to_string(int(policy))); }
  void unhide() override { act("unhide"); }
  void activateIgnoringOtherApps() override { act("activate"); }
  void terminate() override { act("terminate"), isTerminated = true; }

  void setDelegate(orvane::UserNotificationsDelegate* delegate) override { notificationsDelegate = delegate; }
  void deliver(const std::string& title, const std::string& text) override { act("notify " + title + ": " + text); }

  std::unique_ptr<orvane::StatusItem> addItem() override { return std::make_unique<Item>(*this); }

  uint32_t held() const override { return heldKeys; }
  Size largestWindowContent() const override { return area; }
  Size visibleArea() const override { return area; }

  bool isEnabled() const override { return startsAtLogin; }
  bool setEnabled(bool isEnabled) override {
    act("autostart " + std::to_string(int(isEnabled)));
    startsAtLogin = isEnabled;
    return true;
  }

  static std::string name(Window window) {
    static const char* const kNames[] = {"credentials", "location",        "progress",     "confirmation", "update",
                                         "alert",       "launchFileAlert", "editLocation", "settings",     "about"};
    return kNames[int(window)];
  }

 private:
  class Item : public orvane::StatusItem {
   public:
    explicit Item(FakeDesktop& desktop) : desktop_(desktop) { desktop_.act("add item"); }
    ~Item() override { desktop_.act("remove item"); }
    void setToolTip(const std::string& text) override { desktop_.act("tool tip " + text); }
    void setPicture(const std::string& name) override { desktop_.act("picture " + name); }
    void setAlternatePicture(const std::string& name) override { desktop_.act("alternate picture " + name); }

   private:
    FakeDesktop& desktop_;
  };

  struct Modal {
    Window window;
    bool isSession;
    bool isStopped = false;  // a run that goes on until those inside it have ended
  };

  void act(std::string what) { acts_.push_back(std::move(what)); }
  void act(const char* what, Window window, const char* how = "") { act(what + name(window) + how); }

  const std::shared_ptr<PumpedQueue> mainQueue_;
  std::vector<std::string> acts_;
  std::optional<Window> sheet_;
  std::list<Modal> modal_;
  std::set<Window> shown_;
};
