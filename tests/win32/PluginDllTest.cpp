// The example plug-ins as Windows DLLs, loaded and called the way the program calls them:
// exports resolved by name, the C calling convention, UTF-16 text as wchar_t, and result
// chains released with the free() of the C runtime the DLLs share with the host.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <tuple>

#include "TestSupport.h"
#include "autoscene_plugin.h"

namespace autoscene::win32test {
namespace {

constexpr mv_handle kWindow = 0x1234;

class PluginDll : public ::testing::Test {
protected:
    void TearDown() override {
        for (HMODULE module : modules_) {
            FreeLibrary(module);
        }
    }

    // The built example beside the test program's folder, in plugins/.
    HMODULE load(const char* name) {
        const std::string path = besideTestProgram(std::string("..\\..\\plugins\\") + name);
        HMODULE module = LoadLibraryA(path.c_str());
        EXPECT_NE(module, nullptr) << path << " error " << GetLastError();
        modules_.push_back(module);  // FreeLibrary ignores a null one
        return module;
    }

    template <class Function>
    static Function resolve(HMODULE module, const char* name) {
        auto function =
            reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
        EXPECT_NE(function, nullptr) << name;
        return function;
    }

    // Reads a chain into "name=value;" text and frees it as the host does.
    static std::string take(mv_node* chain) {
        std::string text;
        while (chain) {
            text += std::string(chain->name) + "=" + chain->value + ";";
            mv_node* next = chain->next;
            free(chain->name);
            free(chain->value);
            free(chain);
            chain = next;
        }
        return text;
    }

    std::vector<HMODULE> modules_;
};

TEST_F(PluginDll, FileBackendCapturesFromItsFileAndLogsInput) {
    const std::string folder = makeTempFolder("file-backend");
    ASSERT_EQ(_putenv_s("FILE_BACKEND_DIR", folder.c_str()), 0);
    std::ofstream(folder + "\\capture.ppm", std::ios::binary)
        << "P6\n# two pixels\n2 1\n255\n\x01\x02\x03\xfa\xfb\xfc";
    HMODULE module = load("file-backend.dll");
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(resolve<mv_plugin_abi_function>(module, "mv_plugin_abi")(), MV_PLUGIN_ABI);
    resolve<mv_global_init_function>(module, "mv_global_init")();
    resolve<mv_init_function>(module, "mv_init")(kWindow);

    int width = 0;
    int height = 0;
    int channels = 0;
    ASSERT_TRUE(resolve<mv_capture_info_function>(module, "mv_capture_info")(kWindow, &width,
                                                                             &height, &channels) &
                0xFF);
    EXPECT_EQ(std::tuple(width, height, channels), std::tuple(2, 1, 3));
    unsigned char pixels[6] = {};
    resolve<mv_capture_function>(module, "mv_capture")(kWindow, pixels, sizeof pixels);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(pixels), 6), "\x01\x02\x03\xfa\xfb\xfc");

    resolve<mv_mouse_move_function>(module, "mv_mouse_move")(kWindow, 5, 6);
    resolve<mv_mouse_down_function>(module, "mv_mouse_down")(kWindow, 1, 5, 6);
    resolve<mv_mouse_up_function>(module, "mv_mouse_up")(kWindow, 1);
    resolve<mv_mouse_wheel_function>(module, "mv_mouse_wheel")(kWindow, -120, 5, 6);
    resolve<mv_key_down_function>(module, "mv_key_down")(kWindow, 13);
    resolve<mv_key_up_function>(module, "mv_key_up")(kWindow, 13);
    static_assert(sizeof(wchar_t) == sizeof(mv_char16), "wchar_t is UTF-16 on Windows");
    resolve<mv_input_text_function>(module, "mv_input_text")(
        kWindow, reinterpret_cast<const mv_char16*>(L"h\u00e9llo \U0001F600"));
    resolve<mv_uninit_function>(module, "mv_uninit")(kWindow);
    resolve<mv_global_uninit_function>(module, "mv_global_uninit")();

    std::ifstream log(folder + "\\input.log", std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(log), {}),
              "global_init\ninit 4660\nmove 4660 5 6\ndown 4660 1 5 6\nup 4660 1\n"
              "wheel 4660 -120 5 6\nkey_down 4660 13\nkey_up 4660 13\n"
              "text 4660 h\xc3\xa9llo \xf0\x9f\x98\x80\nuninit 4660\nglobal_uninit\n");
}

TEST_F(PluginDll, ColourProbeAveragesARegionAndCountsMatches) {
    HMODULE module = load("colour-probe.dll");
    ASSERT_NE(module, nullptr);
    const auto average = resolve<mv_action_function>(module, "average_color");
    ASSERT_NE(average, nullptr);
    // 3x2 BGR: the left column blue, the rest grey 100.
    unsigned char data[] = {255, 0, 0, 100, 100, 100, 100, 100, 100,
                            255, 0, 0, 100, 100, 100, 100, 100, 100};
    const mv_image image{data, 3, 2, 3};
    char regionName[] = "region", region[] = "1,0,9,9", matchName[] = "match", match[] = "#656565",
         toleranceName[] = "tolerance", tolerance[] = "1";
    mv_node third{toleranceName, tolerance, nullptr};
    mv_node second{matchName, match, &third};
    mv_node first{regionName, region, &second};
    EXPECT_EQ(take(average(&image, &first)), "color=#646464;count=4;");
    EXPECT_EQ(take(average(&image, nullptr)), "color=#434398;count=0;");
    EXPECT_EQ(take(average(nullptr, nullptr)), "");
}

}  // namespace
}  // namespace autoscene::win32test
