/// The blob of a data block, with its marker and length. The caller guarantees the memory of a blob, so a
/// length beyond the buffer is cut to the buffer's. The loader must cope with any smaller length.

#include <algorithm>

#include "fuzz.h"
#include "support/channel_records.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    hold_the_platform();
    zeb5_xml_chan_descr_header head;
    if (size < sizeof head)
        return 0;
    std::vector<std::uint8_t> block(data, data + size); // of just that size, so that reading past it shows
    memcpy(&head, data, sizeof head);
    head.length = std::min(head.length, static_cast<std::int32_t>(size));
    memcpy(block.data(), &head, sizeof head);

    channel_list list;
    const int result =
        zeb5_load_chan_descr(reinterpret_cast<const zeb5_xml_chan_descr_header *>(block.data()), list);
    const bool known = head.pattern == 0xCDECDEF2 || head.pattern == 0xCDECDEF3;
    expect((result == -3) == !known, "another marker is refused");
    expect((result == -4) == (known && head.length <= 8), "a length of 8 or less is refused");
    if (result < 0) {
        expect(list.records.empty(), "a refused blob gives no records");
        return 0;
    }
    channel_list same;
    std::string text(block.begin() + sizeof head, block.begin() + head.length);
    expect(parse_descr_list_read(text.data(), same, false, true) == result, "it reads as its text does");
    expect_same("records of the blob and of its text", describe(list.records), describe(same.records));
    return 0;
}
