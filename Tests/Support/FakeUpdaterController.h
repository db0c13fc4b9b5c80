#pragma once

#include "Platform/Updater.h"

#include <utility>
#include <vector>

/// An updater that looks nowhere.
class FakeUpdaterController final : public UpdaterController {
public:
    bool isStarted = false;
    int checkCount = 0;
    /// Every value that setAutomaticallyChecksForUpdates got.
    std::vector<bool> automaticWrites;

    explicit FakeUpdaterController(bool isAutomatic = true)
        : m_isAutomatic(isAutomatic) { }

    void start() override {
        isStarted = true;
        setCanCheck(true);
    }
    void checkForUpdates() override { ++checkCount; }
    bool canCheckForUpdates() const override { return m_canCheck; }
    bool automaticallyChecksForUpdates() const override { return m_isAutomatic; }
    void setAutomaticallyChecksForUpdates(bool isAutomatic) override {
        automaticWrites.push_back(isAutomatic);
        setAutomatic(isAutomatic);
    }
    void observeCanCheckForUpdates(Observer observer) override {
        m_canCheckObserver = std::move(observer);
        m_canCheckObserver();
    }
    void observeAutomaticallyChecksForUpdates(Observer observer) override {
        m_automaticObserver = std::move(observer);
        m_automaticObserver();
    }

    /// The updater itself changes what is allowed.
    void setCanCheck(bool canCheck) {
        m_canCheck = canCheck;
        m_canCheckObserver();
    }
    /// The updater itself changes its setting.
    void setAutomatic(bool isAutomatic) {
        m_isAutomatic = isAutomatic;
        m_automaticObserver();
    }

private:
    bool m_canCheck = false;
    bool m_isAutomatic;
    Observer m_canCheckObserver = [] {};
    Observer m_automaticObserver = [] {};
};
