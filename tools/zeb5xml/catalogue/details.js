// The panel beside a table: all that is known of one record.

const chips = (names, kind) => names.map((name) => make('span', { class: 'chip ' + kind }, name));

function channelLink(channel, text = channel.daq_name || channel.prop_name) {
    return make('a', { href: '#channels/' + channel.id }, text);
}

/** A name as links to the channels that have it; marked when there are none. */
function nameLinks(name, found) {
    if (found.length === 0)
        return isLost(found)
            ? make(
                  'span',
                  { class: 'lost', title: 'No document in this page describes this channel' },
                  '⚠ ',
                  name,
                  make('span', { class: 'unseen' }, ' (not described)'),
              )
            : make('span', {}, name);
    return [
        channelLink(found[0], name),
        ...found.slice(1).map((channel, at) => [' ', channelLink(channel, `(${at + 2})`)]),
    ];
}

/** Pairs of a term and what it is, without those that are empty. */
function properties(pairs) {
    return make(
        'dl',
        {},
        pairs
            .filter(([, what]) => what !== '' && what !== null && !(Array.isArray(what) && what.length === 0))
            .map(([term, what]) => [make('dt', {}, term), make('dd', {}, what)]),
    );
}

const statistics = (dim) =>
    dim.stats.length === 0
        ? ''
        : make(
              'ul',
              {},
              dim.stats.map((stat) =>
                  make(
                      'li',
                      {},
                      make('b', {}, stat.stat_name),
                      stat.units ? ` in ${stat.units}` : '',
                      stat.stat_desc ? `: ${stat.stat_desc}` : '',
                  ),
              ),
          );

function bitTable(bits) {
    const rows = bits.map((bit) => [String(bit.bit), bit.bit_name, bit.bit_desc]);
    return bits.length ? makeTable({}, ['Bit', 'Name', 'Meaning'], rows, 'Bits') : null;
}

function dimensionTable(dims) {
    const rows = dims.map((dim) => [
        String(dim.dim),
        dim.dim_name,
        dim.units,
        make('div', {}, dim.dim_desc, statistics(dim)),
    ]);
    return dims.length ? makeTable({}, ['No.', 'Name', 'Units', 'Meaning and statistics'], rows, 'Dimensions') : null;
}

function linkList(title, items) {
    return items.length
        ? make(
              'section',
              {},
              make('h3', {}, title),
              make(
                  'ul',
                  {},
                  items.map((item) => make('li', {}, item)),
              ),
          )
        : null;
}

function channelDetails(channel) {
    const twins = channelsByProperty.get(channel.prop_name).filter((other) => other !== channel);
    return [
        make('p', { class: 'lead' }, channel.prop_desc || 'No description.'),
        properties([
            ['Property', make('code', {}, channel.prop_name)],
            ['Name', channel.daq_name && make('code', {}, channel.daq_name)],
            ['Events', chips(channel.events, 'event')],
            ['Data', chips(channel.blocks, 'block')],
            ['Stream', String(channel.stream)],
            ['Subsystem', channel.subsystem],
            ['Server block', channel.sb_name],
            ['Units', channel.units],
            ['Largest size', numberText(channel.max_size)],
            ['Set point', channel.set_point ? 'yes' : 'no'],
            ['Counter', String(channel.count)],
            ['Database key', channel.db_key === -1 ? '' : String(channel.db_key)],
            ['Masks', `${hexadecimal(channel.ev_type)} · ${hexadecimal(channel.dtype)}`],
            ['Document', channel.document.name],
        ]),
        bitTable(channel.bits),
        dimensionTable(channel.dims),
        linkList(
            'Named in',
            channel.namedIn.map(({ place, address }) => make('a', { href: '#' + address }, place)),
        ),
        linkList(
            'Described again',
            twins.map((other) => [channelLink(other), ` in ${other.document.name}`]),
        ),
    ];
}

function featureDetails(feature) {
    return [
        make('p', { class: 'lead' }, feature.tooltip),
        properties([
            ['Type', feature.type],
            ['Other name', feature.extension],
            ['Description', feature.description],
            ['Channels', feature.channels.map((channel) => [channelLink(channel, channel.prop_name), ' '])],
            ['Document', feature.document.name],
        ]),
    ];
}

function showDetails(title, content) {
    byId('details').replaceChildren(
        make(
            'header',
            {},
            make('h2', {}, title),
            make('button', { type: 'button', 'aria-label': 'Close the details', click: closeDetails }, '✕'),
        ),
        ...content.flat().filter((part) => part),
    );
    byId('details').hidden = false;
    byId('details').scrollTop = 0;
    byId('status').textContent = 'Details of ' + title;
    document.body.classList.add('with-details');
}

function hideDetails() {
    byId('details').hidden = true;
    document.body.classList.remove('with-details');
}
