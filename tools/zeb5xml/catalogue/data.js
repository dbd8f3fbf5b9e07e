// The records of the page, and which of them name which channels.

const catalogue = JSON.parse(byId('data').textContent);

/** Turns a list of values into an object. Behind the name of a list of parts come the names of their fields. */
function decoded(fields, values) {
    const record = {};
    let at = 0;
    for (let i = 0; i < fields.length; ++i) {
        const parts = Array.isArray(fields[i + 1]) ? fields[i + 1] : null;
        record[fields[i]] = parts ? values[at].map((part) => decoded(parts, part)) : values[at];
        if (parts) ++i;
        ++at;
    }
    return record;
}

/** All records of a type, each with the document that it is from. */
function recordsOf(...types) {
    const all = [];
    for (const source of catalogue.documents)
        if (types.includes(source.type))
            for (const values of source.records) {
                const record = decoded(source.fields, values);
                record.id = all.length;
                record.document = source;
                all.push(record);
            }
    return all;
}

/** A function that makes something of a mask once, as channels share few masks. */
function remembered(namesOf) {
    const known = new Map();
    return (mask) => known.get(mask) ?? known.set(mask, namesOf(mask)).get(mask);
}
const eventNames = remembered((mask) => catalogue.eventTypes.filter((name, type) => (mask >>> type) & 1));
/** Bit 31 of the mask selects the types from 32 on. */
const blockNames = remembered((mask) => {
    const first = mask >>> 31 ? 32 : 0;
    return catalogue.blockTypes.slice(first, first + 31).filter((name, bit) => (mask >>> bit) & 1);
});

const channels = recordsOf('channel');
const events = recordsOf('event');
const entries = recordsOf('dictionary entry');
const features = recordsOf('feature');

for (const channel of channels) {
    channel.events = eventNames(channel.ev_type);
    channel.blocks = blockNames(channel.dtype);
    channel.namedIn = [];
    const parts = [
        ...channel.bits.flatMap((bit) => [bit.bit_name, bit.bit_desc]),
        ...channel.dims.flatMap((dim) => [dim.dim_name, dim.dim_desc, ...dim.stats.map((stat) => stat.stat_name)]),
    ];
    channel.text = [
        channel.prop_name,
        channel.daq_name,
        channel.prop_desc,
        channel.units,
        channel.subsystem,
        channel.sb_name,
        ...channel.events,
        ...channel.blocks,
        ...parts,
    ]
        .join('\n')
        .toLowerCase();
}
const channelsByName = groupBy(channels, (channel) => channel.daq_name);
const channelsByProperty = groupBy(channels, (channel) => channel.prop_name);
const channelsByBlock = groupBy(channels, (channel) => channel.sb_name);
const channelsByLastPart = groupBy(channels, (channel) => channel.prop_name.split('/').pop());

/** The channels with this name or property. */
function channelsNamed(name) {
    return channelsByName.get(name) || channelsByProperty.get(name) || [];
}

/** Names that no document describes are told only when some document describes channels. */
const isLost = (found) => channels.length > 0 && found.length === 0;
const lostNames = []; // {name, place, address}

/** Notes which channels a record names, and at which address of the page it stands. */
function link(record, name, found, place, address) {
    record.channels = found;
    for (const channel of found) channel.namedIn.push({ place, address });
    if (isLost(found)) lostNames.push({ name, place, address });
}
for (const event of events)
    for (const block of event.sb_list) {
        block.isLost = isLost(channelsByBlock.get(block.sb_list) || []);
        if (block.isLost)
            lostNames.push({
                name: block.sb_list,
                place: `event list, ${event.evtype} (server block)`,
                address: `events/${event.id}`,
            });
        block.links = block.ch_list.map((name) => ({ name }));
        for (const one of block.links)
            link(one, one.name, channelsNamed(one.name), `event list, ${event.evtype}`, `events/${event.id}`);
    }
for (const entry of entries) {
    entry.text = [entry.env_prop, String(entry.index)].join('\n').toLowerCase();
    link(
        entry,
        entry.env_prop,
        channelsNamed(entry.env_prop),
        `env index dictionary, index ${entry.index}`,
        `dictionaries/${entry.id}`,
    );
}
for (const feature of features) {
    feature.text = [feature.name, feature.extension, feature.type, feature.tooltip, feature.description]
        .join('\n')
        .toLowerCase();
    // A camera need not be connected: a feature without a channel is nothing to tell
    feature.channels = channelsByLastPart.get(feature.name) || channelsByLastPart.get(feature.extension) || [];
    for (const channel of feature.channels)
        channel.namedIn.push({ place: `camera feature ${feature.name}`, address: `cameras/${feature.id}` });
}
