// The tables of channels, dictionaries and cameras, and the event lists.

const severalDocuments = (records) => new Set(records.map((record) => record.document)).size > 1;
const documentColumn = (records) =>
    severalDocuments(records) ? [{ title: 'Document', width: '10rem', text: (record) => record.document.name }] : [];

/** The end of a property tells more than its begin, so this is what a narrow cell keeps. */
function propertyText(property) {
    const at = property.lastIndexOf('/', property.lastIndexOf('/') - 1) + 1;
    return make(
        'span',
        { class: 'property' },
        make('span', {}, property.slice(0, at)),
        make('span', {}, property.slice(at)),
    );
}

const tables = {
    channels: () =>
        new Table({
            name: 'channels',
            label: 'Channels',
            rows: channels,
            open: openRecord,
            move: moveToRecord,
            columns: [
                {
                    title: 'Property',
                    width: 'minmax(0, 3fr)',
                    least: 'narrow',
                    text: (channel) => channel.prop_name,
                    cell: (channel) => propertyText(channel.prop_name),
                },
                { title: 'Name', width: 'minmax(0, 1.4fr)', least: 'narrow', text: (channel) => channel.daq_name },
                {
                    title: 'Stream',
                    width: '5.2rem',
                    isNumber: true,
                    number: (channel) => channel.stream,
                    text: (channel) => String(channel.stream),
                },
                {
                    title: 'Events',
                    width: 'minmax(0, 1.3fr)',
                    least: 'medium',
                    text: (channel) => channel.events.join(' '),
                    cell: (channel) => chips(channel.events, 'event'),
                },
                {
                    title: 'Data',
                    width: 'minmax(0, 1.7fr)',
                    text: (channel) => channel.blocks.join(' '),
                    cell: (channel) => chips(channel.blocks, 'block'),
                },
                { title: 'Subsystem', width: 'minmax(0, 0.9fr)', text: (channel) => channel.subsystem },
                { title: 'Units', width: '4.5rem', text: (channel) => channel.units },
                {
                    title: 'Size',
                    width: '5rem',
                    isNumber: true,
                    number: (channel) => channel.max_size,
                    text: (channel) => numberText(channel.max_size),
                },
                ...documentColumn(channels),
            ],
        }),
    dictionaries: () =>
        new Table({
            name: 'dictionaries',
            label: 'Entries of env index dictionaries',
            rows: entries,
            open: (entry) => {
                if (entry.channels.length) location.hash = '#channels/' + entry.channels[0].id;
            },
            move: () => {},
            columns: [
                {
                    title: 'Index',
                    width: '5rem',
                    isNumber: true,
                    least: 'narrow',
                    number: (entry) => entry.index,
                    text: (entry) => String(entry.index),
                },
                {
                    title: 'Property',
                    width: 'minmax(0, 3fr)',
                    least: 'narrow',
                    text: (entry) => entry.env_prop,
                    cell: (entry) => nameLinks(entry.env_prop, entry.channels),
                },
                {
                    title: 'Absolute change',
                    width: '10.5rem',
                    isNumber: true,
                    number: (entry) => Number(entry.env_ch_abs_delta),
                    text: (entry) => String(entry.env_ch_abs_delta),
                },
                {
                    title: 'Relative change',
                    width: '10.5rem',
                    isNumber: true,
                    number: (entry) => Number(entry.env_ch_rel_delta),
                    text: (entry) => String(entry.env_ch_rel_delta),
                },
                ...documentColumn(entries),
            ],
        }),
    cameras: () =>
        new Table({
            name: 'cameras',
            label: 'Features of cameras',
            rows: features,
            open: openRecord,
            move: moveToRecord,
            columns: [
                { title: 'Feature', width: 'minmax(0, 1fr)', least: 'narrow', text: (feature) => feature.name },
                { title: 'Other name', width: 'minmax(0, 0.7fr)', text: (feature) => feature.extension },
                { title: 'Type', width: '8.5rem', least: 'narrow', text: (feature) => feature.type },
                {
                    title: 'Description',
                    width: 'minmax(0, 3fr)',
                    least: 'medium',
                    text: (feature) => feature.description || feature.tooltip,
                },
                {
                    title: 'Channels',
                    width: '6rem',
                    isNumber: true,
                    number: (feature) => feature.channels.length,
                    text: (feature) => String(feature.channels.length || ''),
                },
                ...documentColumn(features),
            ],
        }),
};

function serverBlock(block) {
    const described = channelsByBlock.get(block.sb_list) || [];
    const search = () => {
        clearFilters();
        byId('search').value = block.sb_list;
    };
    return make(
        'section',
        { class: 'block' },
        make(
            'h4',
            {},
            block.isLost
                ? make(
                      'span',
                      { class: 'lost', title: 'No channel in this page is of this server block' },
                      '⚠ ',
                      block.sb_list,
                      make('span', { class: 'unseen' }, ' (not described)'),
                  )
                : described.length
                  ? make('a', { href: '#channels', click: search }, block.sb_list)
                  : block.sb_list,
            make(
                'span',
                { class: 'quiet' },
                block.links.length ? ' ' + counted(block.links.length, 'channels') : ' all channels',
            ),
        ),
        make(
            'ul',
            { class: 'names' },
            block.links.map((one) => make('li', {}, nameLinks(one.name, one.channels))),
        ),
    );
}

function eventCard(event) {
    const time = event.timeup
        ? new Date(event.timeup * 1000).toISOString().replace('.000Z', '') +
          '.' +
          String(event.timelow).padStart(6, '0') +
          ' UTC'
        : '';
    return make(
        'article',
        { class: 'card', id: 'event-' + event.id, tabindex: -1 },
        make('h3', {}, event.evtype),
        properties([
            ['Priority', String(event.priority)],
            ['Time mask', event.tmask ? hexadecimal(event.tmask) : ''],
            ['Not before', time],
        ]),
        event.sb_list.length ? event.sb_list.map(serverBlock) : make('p', { class: 'quiet' }, 'All server blocks'),
    );
}

function eventLists() {
    return make(
        'div',
        { class: 'page' },
        [...groupBy(events, (event) => event.document)].map(([source, list]) =>
            make('section', {}, make('h2', {}, source.name), make('div', { class: 'cards' }, list.map(eventCard))),
        ),
    );
}
