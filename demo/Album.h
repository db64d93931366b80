// The demo's pictures: one file a step, and one that moves.
#pragma once

#include <QImage>
#include <filesystem>
#include <string>
#include <vector>

namespace klova::demo {

class Album {
public:
    /// Empties `folder` of the pictures of an earlier run.
    explicit Album(std::filesystem::path folder);

    /// Saves it under the next number and `name`. Throws std::runtime_error where that fails.
    void add(const QImage& picture, const std::string& name);

    /// Makes one animated picture of all of them; returns its path. Throws where that fails.
    std::filesystem::path animate() const;

    std::size_t size() const { return frames_.size(); }

private:
    std::filesystem::path folder_;
    std::vector<std::string> frames_; // small ones, for the animation
};

} // namespace klova::demo
