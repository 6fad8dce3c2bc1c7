// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/build_check.h>

#include <cstring>
#include <set>
#include <string>
#include <vector>

namespace {

using Figures = std::vector<PI::_BUILD_FIGURE>;

Figures OwnFigures() {
    return Figures(std::begin(PI::BUILD_FIGURES), std::end(PI::BUILD_FIGURES));
}

std::string Difference(const Figures& figures) {
    return PI::BuildDifference(figures.data(), figures.size());
}

TEST(BuildCheck, ModuleOfTheSameBuildFits) {
    EXPECT_EQ(PI::BuildDifference(), "");
}

TEST(BuildCheck, EveryFigureThatDiffersIsNamedWithBothValues) {
    for (std::size_t i = 0; i < std::size(PI::BUILD_FIGURES); ++i) {
        Figures figures = OwnFigures();
        figures[i].m_Value += 1;
        const std::uint64_t value = PI::BUILD_FIGURES[i].m_Value;
        EXPECT_EQ(Difference(figures), std::string("the module was built with ") + figures[i].m_Name + " = " +
                                           std::to_string(value + 1) + ", libpi " + PI::Version() + " with " +
                                           std::to_string(value));
    }
}

TEST(BuildCheck, MajorVersionComesBeforeWhatFollowsFromIt) {
    Figures figures = OwnFigures();
    for (PI::_BUILD_FIGURE& figure : figures) {
        figure.m_Value += 1;
    }
    EXPECT_EQ(Difference(figures), std::string("the module was built with PI_VERSION_MAJOR = 2, libpi ") +
                                       PI::Version() + " with 1");
}

TEST(BuildCheck, FigureOfANewerModuleIsPassedOver) {
    Figures figures = OwnFigures();
    figures.insert(figures.begin(), {"sizeof(PI::CFuture)", 8});
    figures.push_back({"", 8});
    figures.push_back({nullptr, 8});
    EXPECT_EQ(Difference(figures), "");
}

TEST(BuildCheck, OlderModuleIsJudgedByTheFiguresThatItHas) {
    Figures figures = {PI::BUILD_FIGURES[0], {"sizeof(PI::CObject)", sizeof(PI::CObject)}};
    EXPECT_EQ(Difference(figures), "");
    figures[1].m_Value = 1;
    EXPECT_EQ(Difference(figures), std::string("the module was built with sizeof(PI::CObject) = 1, libpi ") +
                                       PI::Version() + " with " + std::to_string(sizeof(PI::CObject)));
}

TEST(BuildCheck, ModuleThatDoesNotSayItsMajorVersionDoesNotFit) {
    const std::string sentence = std::string("the module does not say its PI_VERSION_MAJOR, libpi ") +
                                 PI::Version() + " has " + std::to_string(PI_VERSION_MAJOR);
    EXPECT_EQ(PI::BuildDifference(nullptr, 0), sentence);
    EXPECT_EQ(Difference({{"sizeof(std::string)", sizeof(std::string)}}), sentence);
}

TEST(BuildCheck, SentenceIsCutToTheCapacityAndItsWholeLengthReturned) {
    const PI::_BUILD_FIGURE figure = {"PI_VERSION_MAJOR", 7};
    const std::string whole = PI::BuildDifference(&figure, 1);
    for (const std::size_t capacity : {std::size_t(1), std::size_t(10), whole.size(), whole.size() + 1}) {
        std::string buffer(whole.size() + 2, '#');
        EXPECT_EQ(PI::CompareBuild(&figure, 1, buffer.data(), capacity), whole.size());
        EXPECT_EQ(buffer.substr(0, capacity), whole.substr(0, capacity - 1) + '\0');
        EXPECT_EQ(buffer[capacity], '#');
    }
    EXPECT_EQ(PI::CompareBuild(&figure, 1, nullptr, 0), whole.size());
    char untouched = '#';
    const Figures own = OwnFigures();
    EXPECT_EQ(PI::CompareBuild(own.data(), own.size(), &untouched, 0), 0U);
    EXPECT_EQ(untouched, '#');
    EXPECT_EQ(PI::CompareBuild(own.data(), own.size(), &untouched, 1), 0U);
    EXPECT_EQ(untouched, '\0');
}

TEST(BuildCheck, NamesOfFiguresAreDifferent) {
    std::set<std::string> names;
    for (const PI::_BUILD_FIGURE& figure : PI::BUILD_FIGURES) {
        EXPECT_TRUE(names.insert(figure.m_Name).second) << figure.m_Name;
    }
}

}  // namespace
