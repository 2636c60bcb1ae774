#pragma once

#include "walk/built/Scene.h"

#include <cstdint>
#include <random>

/// Decides what a random analyst does next with what is on the screen, and what happens to his
/// instrument and computer meanwhile, by a seed.
class BuiltAnalyst {
public:
    /// What happens to him besides what he does.
    enum class Troubles { ofLine, ofLineClockAndDisk };

    /// `files` is the folder in which all files are that he names.
    BuiltAnalyst(std::uint64_t seed, QString files, Troubles troubles);

    /// A box or a file dialog is answered before anything else; nothing where none waits. Who
    /// leaves confirms it.
    std::optional<Step> Answer(const Scene& scene, bool leaving);

    /// On the way from the start to the first record; nothing where he has come there.
    std::optional<Step> TowardsRecord(const Scene& scene) const;

    /// Whatever comes to his hand; nothing where there is nothing.
    std::optional<Step> Act(const Scene& scene);

    /// What brings him nearer to the program's end.
    static Step TowardsEnd(const Scene& scene);

    std::size_t Below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
    }

private:
    using Decide = std::optional<Step> (BuiltAnalyst::*)(const Scene&, const SpokenControl&);

    Step AnswerBox(const Scene& scene, const SpokenControl& box, bool leaving);
    Step AnswerFileDialog(const SpokenControl& name, bool leaving);
    Step Disturb();
    QString AnyOf(const QStringList& texts);
    std::optional<SpokenControl> Any(const Scene& scene, const SpokenControl& window,
                                     const QStringList& roles);

    std::optional<Step> PressButton(const Scene& scene, const SpokenControl& window);
    std::optional<Step> ChooseFromMenu(const Scene& scene, const SpokenControl& window);
    std::optional<Step> ChooseEntry(const Scene& scene, const SpokenControl& window);
    std::optional<Step> WriteText(const Scene& scene, const SpokenControl& window);
    std::optional<Step> PressKey(const Scene& scene, const SpokenControl& window);
    std::optional<Step> TurnWheel(const Scene& scene, const SpokenControl& window);
    std::optional<Step> Click(const Scene& scene, const SpokenControl& window);
    std::optional<Step> Resize(const Scene& scene, const SpokenControl& window);
    std::optional<Step> Close(const Scene& scene, const SpokenControl& window);

    std::mt19937_64 random_;
    QString files_;
    Troubles troubles_;
};
