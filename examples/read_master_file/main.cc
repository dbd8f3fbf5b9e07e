#include <cstdio>

#include <ZEB5XML/zeb5xml.hpp>

int main(int argc, char **argv) {
    if (argc != 3)
        return 1;
    try {
        const auto channels = zeb5xml::channel_list::read(argv[1]);
        const chan_descr_2010 *const found = channels.find(argv[2]);
        if (found)
            zeb5xml::print(*found);
        return found ? 0 : 2;
    } catch (const zeb5xml::error &problem) {
        std::fprintf(stderr, "%s\n", problem.what());
        return 1;
    }
}
