#pragma once

#include "Platform/SystemSound.h"

#include <QStringList>

#include <memory>
#include <optional>
#include <set>
#include <vector>

/// Sounds that write down what is done to them.
class FakeSystemSounds final : public SystemSounds {
public:
    struct Sound {
        QString name;
        bool loops = false;
        std::optional<float> volume;
        bool isPlaying = false;
        /// Of the first moment that could be heard.
        std::optional<float> volumeAtPlay {};
        bool isDestroyed = false;
    };

    std::unique_ptr<SystemSound> named(const QString &name) override;

    /// The names that can be loaded.
    std::set<QString> names;
    /// What was asked for by name, found or not.
    QStringList requests;
    /// What was done to loaded sounds, in order, such as "Hero play".
    QStringList calls;
    /// Every sound that was loaded, with its present state.
    std::vector<std::shared_ptr<Sound>> sounds;
};
