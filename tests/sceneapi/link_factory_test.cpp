#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <thread>
#include <utility>

#include "importers/sceneapi/dev/null_api.h"
#include "importers/sceneapi/dev/repeat_link_factory.h"
#include "importers/sceneapi/dev/scene_tree_search.h"
#include "importers/sceneapi/dev/velmoralive_loader.h"
#include "importers/sceneapi/dev/xml_nesting.h"
#include "tests/support/installation_entries.h"
#include "tests/support/stand_in_library.h"

namespace qor {
namespace {

namespace fs = std::filesystem;
using Calls = std::vector<std::string>;

constexpr char kEmpty[] = "<scene><top><group/><group/></top></scene>";
constexpr char kOther[] = "<scene><top><group><object/></group></top></scene>";
constexpr char kRoom[] = "<scene><top><group name=\"room\"><object/></group></top></scene>";
constexpr char kUnnamed[] = "<scene name=\"\"><top><group><object/></group></top></scene>";

std::string nested(const std::string& begin, int levels, const std::string& end) {
    std::string xml;
    for (int i = 0; i < 2 * levels; ++i) {
        xml += i < levels ? begin : end;
    }
    return xml;
}

struct Running {
    int version;
    std::int64_t process;
    const char* tree;
    int port;
};

std::string listed(const std::vector<Running>& all) {
    std::string xml = "<?xml version=\"1.0\"?><velmora_instances>";
    for (const Running& one : all) {
        xml += "<i><process_id>" + std::to_string(one.process) + "</process_id><version_major>" +
               std::to_string(one.version) + "</version_major><livelink_port>" +
               std::to_string(one.port) + "</livelink_port></i>";
    }
    return xml + "</velmora_instances>";
}

constexpr std::int64_t kDeafProcess = 5000000000;

// The calls that the fake library has received, and how it behaves.
struct Fake {
    Calls calls;
    std::vector<std::string> looks = {""};  // lists of renderers, given in turn; the last one stays
    std::map<std::int64_t, const char*> trees;  // by process
    int open_port = 0;                          // 0 opens every port
    bool throws_at_the_end = false;
    enum { kNothing, kRoot, kQuery, kScene } gives = kScene;
};
Fake fake;

class FakeScene final : public NullApi {
public:
    void set_id(std::uint32_t id) override { fake.calls.push_back("id " + std::to_string(id)); }
    bool connect(const char* host, std::int32_t port, std::int32_t argument) override {
        fake.calls.push_back(host + (" " + std::to_string(port)) + " " + std::to_string(argument));
        return fake.open_port == 0 || fake.open_port == port;
    }
    bool disconnect() override {
        fake.calls.emplace_back("disconnect");
        if (fake.throws_at_the_end) {
            throw 7;
        }
        return true;
    }
};

class FakeLibrary final : public StandInLibrary {
public:
    ~FakeLibrary() override { fake.calls.emplace_back("delete root"); }
    qorScene_api* get_scene_api(int, int) override {
        return fake.gives >= Fake::kScene ? &scene_ : nullptr;
    }
    QueryApi* get_query_api(int, int) override {
        return fake.gives >= Fake::kQuery ? this : nullptr;
    }
    const char* instances_xml() override {
        fake.calls.emplace_back("look");
        xml_ = fake.looks.front();
        fake.looks.erase(fake.looks.begin(), fake.looks.begin() + (fake.looks.size() > 1));
        return xml_.c_str();
    }
    bool connect(std::int64_t process) override {
        fake.calls.push_back("into " + std::to_string(process));
        tree_ = fake.trees[process];
        return process != kDeafProcess;
    }
    void disconnect() override { fake.calls.emplace_back("out"); }
    const char* scene_xml() override { return tree_; }

private:
    FakeScene scene_;
    std::string xml_;
    const char* tree_ = nullptr;
};

// An installation of version 11 with three ports and a program that can't be started.
class LinkFactoryTest : public testing::Test {
protected:
    LinkFactoryTest() {
        fake = Fake();
        std::ofstream(folder_.path() / "velmora.exe") << "no program";
        install("Velmora 11", "velmora.exe");
        factory_.set_min_version(6);
        factory_.set_max_version(11);
        factory_.set_retry_wait_ms(1);
        factory_.set_retries(4);
    }
    ~LinkFactoryTest() override {
        factory_.close();
        unload();
    }

    void install(const std::string& name, const std::string& program,
                 const char* first_port = "\"4301\"", const char* last_port = "\"4303\"") {
        const std::string path = folder_.path().u8string();
        auto all = installation_entries("HKEY_CURRENT_USER", name, folder_ / program, path, path);
        all.push_back({all[0].hive, all[0].key, "LiveLinkPort", first_port});
        all.push_back({all[0].hive, all[0].key, "LiveLinkMaxPort", last_port});
        registry_.reset();
        registry_.emplace(all);
    }

    // Installs the fake library, and keeps it loaded until `keeper_` is reset.
    void add_library(const std::string& name = "qorvelmoralive6_64.so") {
        fs::copy_file(VSQ_FAKE_LIVE_LIBRARY, folder_.path() / name);
        keeper_ = load_fake_library(
            folder_ / name,
            []() -> live_library::Root* { return fake.gives ? new FakeLibrary : nullptr; },
            [] { fake.calls.emplace_back("unload"); });
    }

    TemporaryFolder folder_;
    std::optional<RegistryEntries> registry_;
    std::optional<platform::DynamicLibrary> keeper_;
    RepeatLinkFactory factory_;
};

// A process opens the log only once, so this test comes first.
TEST_F(LinkFactoryTest, LogsWhatTheLibraryThrowsOnClosing) {
    add_library();
    fake.throws_at_the_end = true;
    EXPECT_NE(factory_.get_api(), nullptr);
    fake.calls.clear();
    factory_.close();
    EXPECT_EQ(fake.calls, (Calls{"disconnect", "delete root"}));
    EXPECT_THAT(file_contents(folder_ / "sceneapi.log"),
                testing::HasSubstr("ERROR:  live library: disconnect failed: unknown reason"));
}

TEST_F(LinkFactoryTest, ChoosesAmongTheRunningRenderers) {
    add_library();
    const std::string too_deep = nested("<g n='>'>", 100000, "</g>");
    const struct {
        std::vector<Running> running;
        const char* scene;
        bool any;
        int wanted_port;  // 0 for none
        bool is_found;
    } cases[] = {
        {{{11, 7, kOther, 1}, {9, 8, kRoom, 2}}, "room", true, 2, true},
        {{{9, 7, kRoom, 1}, {10, 8, kRoom, 2}}, "room", false, 2, true},
        {{{9, 7, kRoom, 1}, {9, 8, kRoom, 2}}, "room", false, 1, true},
        {{{11, 7, kUnnamed, 1}}, "", false, 0, false},
        {{{9, 7, kEmpty, 1}, {10, 8, kOther, 2}, {10, 9, kEmpty, 3}}, "", true, 2, false},
        {{{9, 7, "<scene>", 1}}, "", true, 1, false},
        {{{9, 7, "<scene>", 1}}, "", false, 0, false},
        {{{11, 7, kOther, 1}, {9, 8, kEmpty, 2}, {10, 9, kEmpty, 3}}, "", false, 3, false},
        {{{9, 7, kEmpty, 1}, {9, 8, kEmpty, 2}}, "", false, 1, false},
        {{{5, 7, kEmpty, 1}, {12, 8, kEmpty, 2}}, "", true, 0, false},
        {{{6, 7, kEmpty, 1}, {11, 8, kEmpty, 2}}, "", true, 2, false},
        {{{11, 7, kEmpty, -1}, {9, 8, kEmpty, 2}}, "", true, 2, false},
        {{{11, kDeafProcess, kEmpty, 1}, {9, 8, kEmpty, 2}}, "", true, 2, false},
        {{{11, 7, nullptr, 1}, {9, 8, kEmpty, 2}}, "", true, 2, false},
        {{{11, 7, too_deep.c_str(), 1}, {9, 8, kEmpty, 2}}, "", true, 2, false},
    };
    for (const auto& c : cases) {
        fake.looks = {listed(c.running)};
        for (const Running& one : c.running) {
            fake.trees[one.process] = one.tree;
        }
        factory_.set_scene_name(c.scene);
        factory_.set_connect_any(c.any);
        EXPECT_NE(factory_.get_api(), nullptr);
        EXPECT_EQ(fake.calls.back(), c.wanted_port == 0
                                         ? "127.0.0.1 4301 1"
                                         : "localhost " + std::to_string(c.wanted_port) + " 4")
            << listed(c.running);
        EXPECT_EQ(factory_.found_scene(), c.is_found) << listed(c.running);
        factory_.close();
    }
}

TEST_F(LinkFactoryTest, ConnectsOnceAndUnloadsOnClosing) {
    add_library();
    fake.looks = {listed({{9, 7, kEmpty, 70}, {8, kDeafProcess, kEmpty, 71}, {7, 8, kEmpty, -1}})};
    fake.trees[7] = kEmpty;
    fake.open_port = 1;
    factory_.set_id(5);
    EXPECT_EQ(factory_.get_api(), nullptr);
    EXPECT_EQ(factory_.error(),
              "Failed to connect. Could not connect on any known port. Please check your Velmora "
              "installation and Live Link settings.");
    factory_.close();  // without a connection, the library stays loaded
    const Calls attempt = {"look", "into 7", "out", "into 5000000000", "id 5", "localhost 70 4"};
    EXPECT_EQ(std::exchange(fake.calls, {}), attempt);

    fake.open_port = 70;
    EXPECT_NE(factory_.get_api(), nullptr);
    EXPECT_EQ(factory_.get_api(), factory_.get_api());
    EXPECT_EQ(factory_.error(), "");
    EXPECT_EQ(factory_.connected_port(), 70);
    EXPECT_EQ(std::exchange(fake.calls, {}), attempt);

    keeper_.reset();
    factory_.close();
    factory_.close();
    EXPECT_EQ(fake.calls, (Calls{"disconnect", "delete root", "unload"}));
}

TEST_F(LinkFactoryTest, StartsARendererOrTriesTheRegisteredPorts) {
    add_library();
    fs::copy_file(VSQ_STARTED_PROGRAM, folder_.path() / "started.exe");
    const std::string shown = listed({{11, 7, kEmpty, 70}});
    const std::string damaged = shown.substr(0, shown.size() - 1);
    const std::string mark = folder_ / "started.exe.started";
    const struct {
        const char* program;
        std::vector<std::string> looks;
        int open_port;
        Calls calls;
    } cases[] = {
        {"velmora.exe", {""}, 4302, {"look", "id 1", "127.0.0.1 4301 1", "127.0.0.1 4302 1"}},
        {"started.exe",
         {"", damaged, shown},
         70,
         {"look", "look", "look", "into 7", "out", "id 1", "localhost 70 4"}},
        {"started.exe",
         {""},
         4303,
         {"look", "look", "look", "look", "id 1", "127.0.0.1 4301 1", "127.0.0.1 4302 1",
          "127.0.0.1 4303 1"}},
    };
    fake.trees[7] = kEmpty;
    for (const auto& c : cases) {
        install("Velmora 11", c.program);
        fake.looks = c.looks;
        fake.open_port = c.open_port;
        fake.calls.clear();
        EXPECT_NE(factory_.get_api(), nullptr);
        EXPECT_EQ(factory_.error(), "");
        EXPECT_EQ(fake.calls, c.calls);
        factory_.close();

        // The program writes the number of its arguments when it runs.
        const std::string wanted = c.program == std::string("started.exe") ? "0" : "";
        for (int tries = 0; tries < 1000 && file_contents(mark) != wanted; ++tries) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        EXPECT_EQ(file_contents(mark), wanted);
        std::error_code ignored;
        fs::remove(fs::u8path(mark), ignored);
    }
}

TEST_F(LinkFactoryTest, ReportsWhatIsMissing) {
    const auto check = [this](const std::string& missing) {
        EXPECT_EQ(factory_.get_api(), nullptr);
        EXPECT_EQ(factory_.error(), "Failed to connect. Could not get a " + missing +
                                        " api. Please check your Velmora installation.\n");
    };
    check("query");  // without a library
    add_library();
    for (const auto gives : {Fake::kNothing, Fake::kRoot, Fake::kQuery}) {
        fake.gives = gives;
        check(gives == Fake::kQuery ? "scene" : "query");
    }
    unload();
    registry_.reset();
    registry_.emplace(std::vector<RegistryEntry>{});
    check("query");  // without an installation
}

TEST_F(LinkFactoryTest, TriesOnlyValidPorts) {
    add_library();
    install("Velmora 11", "velmora.exe", "\"-2147483648\"", "\"2\"");
    fake.open_port = -1;
    EXPECT_EQ(factory_.get_api(), nullptr);
    EXPECT_THAT(fake.calls, testing::IsSupersetOf({"127.0.0.1 1 1", "127.0.0.1 2 1"}));
    EXPECT_THAT(fake.calls, testing::Not(testing::Contains("127.0.0.1 0 1")));
}

// The first library with a matching name is used, even if it isn't a live library.
TEST_F(LinkFactoryTest, FindsTheLibraryByItsNames) {
    fs::create_directory(folder_.path() / "here");
    fs::current_path(folder_.path() / "here");
    const struct {
        int version;
        const char* library;
        const char* useless_library;
        bool is_found;
    } cases[] = {
        {11, "qorvelmoralive6_64.so", "qorvelmoralive6_32.so", false},
        {11, "qorvelmoralive6_64.so", "here/qorvelmoralive6_32.so", true},
        {11, "here/qorvelmoralive6_32.so", "here/qorvelmoralive6_64.so", true},
        {6, "here/qorvelmoralive6_64.so", "qorvelmoralive32.so", true},
        {5, "qorvelmoralive64.so", "qorvelmoralive6_32.so", true},
        {5, "here/qorvelmoralive32.so", "here/qorvelmoralive64.so", true},
    };
    for (const auto& c : cases) {
        install("Velmora " + std::to_string(c.version), "velmora.exe");
        fs::copy_file(VSQ_USELESS_LIVE_LIBRARY, folder_.path() / c.useless_library);
        add_library(c.library);
        EXPECT_EQ(qor_get_query_api(5, 11) != nullptr, c.is_found) << c.version << c.library;
        unload();
        keeper_.reset();
        fs::remove(folder_.path() / c.library);
        fs::remove(folder_.path() / c.useless_library);
    }
    fs::current_path(fs::temp_directory_path());
}

// Parsing 100,000 levels would overflow the stack.
TEST(SceneTree, IsMeasuredBeforeItIsParsed) {
    const struct {
        std::string xml;
        bool is_too_deep;
    } cases[] = {
        {nested("<g>", 256, "</g>"), false},
        {nested("<g>", 257, "</g>"), true},
        {nested("<g><!-- </g> --><![CDATA[</g>]]>", 257, "</g>"), true},
        {nested("<g a=\"</g>\" b='/>'>", 257, "</g>"), true},
        {"<?xml version=\"1.0\"?>" + nested("<g>", 200, "<a/><a b='>'/></g>"), false},
        {"<a>" + nested("<b></b><c/>", 1000, "") + "</a>", false},
        {nested("</g>", 300, "") + nested("<g>", 257, ""), true},
        {"<a b='", false},
        {"", false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(IsNestedTooDeep(c.xml.c_str()), c.is_too_deep) << c.xml.substr(0, 60);
    }
}

TEST(SceneTree, IsSearchedToTheDepthThatTheVersionUses) {
    const struct {
        const char* xml;
        int version;
        bool is_empty, holds;
    } cases[] = {
        {"<a><b><c/><c><d/></c></b></a>", 11, false, false},
        {"<a><b/><b><c><d/></c></b></a>", 11, true, false},
        {"<a><b><c name=\"n\"/></b></a>", 6, true, true},
        {"<a><b><c><d name=\"n\"/></c></b></a>", 6, false, false},
        {"<a><b><c><d name=\"n\"/></c></b></a>", 7, false, true},
        {"<a><b><c><d><e name=\"n\"/></d></c></b></a>", 7, false, false},
        {"<a><b modelset=\"active\" name=\"n\"/></a>", 11, true, true},
        {"<a><b modelset=\"hidden\"><c name=\"n\"/></b></a>", 11, true, false},
        {"<a><b modelset=\"hidden\"/><b name=\"n\"/></a>", 11, true, true},
    };
    for (const auto& c : cases) {
        const SceneTreeFindings found = SearchSceneTree(c.xml, "n", c.version);
        EXPECT_EQ(found.is_empty, c.is_empty) << c.xml;
        EXPECT_EQ(found.holds_scene, c.holds) << c.xml << c.version;
    }
}

}  // namespace
}  // namespace qor
