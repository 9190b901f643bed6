// Machines that miss something of OpenGL.

#include "ombrel/platform/framework/Error.h"
#include "ombrel/platform/opengl/GLCanvas.h"

#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iostream>

namespace ombrel {
namespace {

using testing::AllOf;
using testing::HasSubstr;

/// What entering tells; empty when it succeeds.
std::string Complaint(GLContext& context)
{
    try {
        context.Enter();
    } catch (Error const& error) {
        EXPECT_EQ(error.GetKind(), Error::Kind::Resource);
        return error.what();
    }
    context.Leave();
    return {};
}

TEST(GLMissing, LibrariesAreNamedWithWhatToInstall)
{
    GLContext none({ "libombrel-none.so.1", "libOpenGL.so.0" });
    auto const complaint = Complaint(none);
    EXPECT_THAT(complaint, AllOf(HasSubstr("libombrel-none.so.1"), HasSubstr("apt install libegl1")));
    EXPECT_EQ(Complaint(none), complaint);
    // A library that is there, but not the one.
    GLContext other({ "libm.so.6", "libOpenGL.so.0" });
    EXPECT_THAT(Complaint(other), AllOf(HasSubstr("eglBindAPI"), HasSubstr("apt install libegl1")));
    // Neither is in the way of the process's own.
    GLCanvas canvas;
    GLCanvas::Scope const scope(canvas);
}

// In processes of their own: the driver is looked for once.
int DrawWithout(char const* variable, char const* value)
{
    setenv(variable, value, 1);
    GLCanvas canvas;
    std::string first;
    for (int i = 0; i < 2; ++i) {
        try {
            GLCanvas::Scope const scope(canvas);
            std::cerr << "there was a driver";
            return 1;
        } catch (Error const& error) {
            if (i > 0 && first != error.what())
                return 2;
            first = error.what();
        }
    }
    std::cerr << first;
    return 0;
}

TEST(GLMissingDeathTest, DriversAreAskedForWithWhatToInstall)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (auto const& [variable, value] : { std::pair("__EGL_VENDOR_LIBRARY_FILENAMES", "/none.json"),
             std::pair("LIBGL_DRIVERS_PATH", "/none"), std::pair("MESA_GL_VERSION_OVERRIDE", "2.1") })
        EXPECT_EXIT(std::exit(DrawWithout(variable, value)), testing::ExitedWithCode(0), "no driver.*libgl1-mesa-dri");
}

} // namespace
} // namespace ombrel
