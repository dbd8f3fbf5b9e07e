#include <ZEB5XML/parse_chan_descr.h>

int main(int argc, char **argv) {
    std::vector<chan_descr_2010 *> channels;
    if (argc != 3 || zeb5_load_master_daq_channel_description_file(&channels, argv[1]) != 0)
        return 1; // what went wrong stands on standard error

    chan_descr_2010 *found = find_chan_entry(&channels, argv[2]);
    if (found) {
        std::vector<chan_descr_2010 *> one(1, found);
        print_zeb5_chan_descr(&one);
    }
    clean_chan_desr_list(&channels);
    return found ? 0 : 2;
}
