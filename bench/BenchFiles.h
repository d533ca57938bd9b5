#pragma once
// The generated inputs of the reading benchmarks, in one place, so that bench/compare
// can read the very files the benchmarks read.
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace benchfiles {

// The path of a generated input: written once per run, into $GELVANE_BENCH_DIR when set
// (the files stay there), else into a temporary folder that is removed at exit.
std::string File(const std::string &name, const std::function<std::string()> &make);

// A pose whose owners are `props` props of `materials` materials each, CRLF line ends.
std::string PoseWithProps(int props, int materials);

// A channel section (line feeds only) of `channels` dials, `perActor` to an actor.
std::string ChannelSection(int channels, int perActor);

// A character of about `megabytes` MB with morph targets full of deltas, CRLF line ends.
std::string Character(size_t megabytes);

// Inputs of one shape that a literal reading of the file would cost far more than
// linear time on: the file name (its extension gives the kind) and its text.
struct Shape {
    std::string Name;
    std::function<std::string()> Make;
};
std::vector<Shape> AdversarialShapes();

} // namespace benchfiles
