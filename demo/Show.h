// Plays every gesture on the stage, and says of each whether the windows ended where they belong.
#pragma once

#include "Album.h"
#include "Caption.h"
#include "QuitRequest.h"
#include "Stage.h"
#include "desktop/Klova.h"

#include <chrono>
#include <functional>

namespace klova::demo {

class Show {
public:
    /// `pause` is how long each step stays for somebody who watches.
    Show(Stage& stage, Album& album, const std::filesystem::path& binary,
         std::chrono::milliseconds pause);

    /// Returns how many gestures went wrong.
    int play();

private:
    struct Step {
        CaptionText caption;
        const Program& program;
        std::function<void()> act;
        /// What is wrong afterwards, empty for nothing.
        std::function<std::string()> fault;
    };

    void playSnaps();
    void playMaximized();
    void playDoubleClicks();
    void playDrag();
    void playMinimize();
    void playQuit();

    void snap(const Program& program, const rig::SnapGesture& gesture);
    void doubleClick(const Program& program, rig::Place place, const std::string& meaning);
    void focus(const Program& program);
    void perform(const Step& step);
    std::string awaitFault(const Step& step);
    std::string movedOthers(const Program& program, const std::vector<rig::Rect>& before);
    std::vector<rig::Rect> frames();
    void linger();

    QuitRequest quit_;
    Stage& stage_;
    Album& album_;
    Caption caption_;
    rig::Klova klova_;
    std::chrono::milliseconds pause_;
    int faults_ = 0;
};

} // namespace klova::demo
