// The platform tests need an application object for the Qt parts (message
// boxes, cursors, the event loop); the runner sets QT_QPA_PLATFORM=offscreen.

#include <gtest/gtest.h>

#include "platform/Application.h"

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    zorfa::platform::Application app(argc, argv);
    return RUN_ALL_TESTS();
}
