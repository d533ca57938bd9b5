#pragma once
// A session with its own settings and scripted user, alone or as a fixture on a
// temporary home, and the look-ups that the core tests share.
#include "core/model/Session.h"
#include "core/model/Settings.h"
#include "core/platform/Failure.h"
#include "support/ScriptedInteraction.h"
#include "support/TestHome.h"

#include <gtest/gtest.h>

#include <cctype>
#include <functional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace gelvane::test {

using Strings = std::vector<std::string>;

// One member of each record of a list, in order.
template <class T, class M> std::vector<M> Each(const std::vector<T> &list, M T::*member) {
    std::vector<M> values;
    for (const T &record : list)
        values.push_back(record.*member);
    return values;
}

// The names of the records of a list, in order.
template <class T> Strings NamesOf(const std::vector<T> &list) {
    return Each(list, &T::Name);
}

struct TestSession {
    Settings settings;
    ScriptedInteraction ui;
    Session session{settings, ui};

    Strings MaterialNames(size_t figure = 0) const { return NamesOf(session.Figures.at(figure).Materials); }
    // The texts of the message boxes shown so far.
    Strings Texts() const { return Each(ui.messages(), &RecordedMessage::Text); }
};

class SessionFixture : public ::testing::Test, public TestSession {
protected:
    TestHome home;
};

// The texts joined with `separator` between them.
inline std::string Join(const Strings &texts, const std::string &separator) {
    std::string joined;
    for (const std::string &text : texts)
        joined += (joined.empty() ? "" : separator) + text;
    return joined;
}

// What a file dialog was asked for, to compare with a tuple.
inline auto Fields(const FileDialogRequest &r) {
    return std::tie(r.Title, r.Filter, r.DefaultExt, r.InitialDir, r.FileName, r.Flags, r.ForSave);
}

// Two owners and an actor row behind them: "figure" (Skin, Eyes, Lips), "hat" (Band),
// "actor hip".
void FillTwoFigures(Session &session);

// A name for one case of a parameterised test: the letters and digits of `text`.
inline std::string TestName(std::string_view text) {
    std::string name;
    for (const char c : text)
        if (std::isalnum(static_cast<unsigned char>(c)))
            name += c;
    return name;
}

// The number of the failure that `run` throws; 0 when it throws none.
inline int FailureNumber(const std::function<void()> &run) {
    try {
        run();
    } catch (const Failure &f) {
        return f.Number;
    }
    return 0;
}

} // namespace gelvane::test
