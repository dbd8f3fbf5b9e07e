#include <cstdlib>
#include <ctime>

#include <gtest/gtest.h>

int main(int argc, char **argv) {
    setenv("TZ", "Asia/Kathmandu", 1); // dates are local time: a zone far from UTC shows a mistake
    tzset();
    unsetenv("XERCES_DISABLE_DTD"); // it would refuse every DOCTYPE
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
