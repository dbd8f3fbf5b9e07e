// The overview: documents, the map of event types and subsystems, and sizes.

/** A table of how many channels of each subsystem take part in each event type; a cell leads to them. */
function heatMap() {
    const subsystems = [...groupBy(channels, (channel) => channel.subsystem)]
        .sort(([a], [b]) => (sortText(a) < sortText(b) ? -1 : 1));
    const types = [...catalogue.eventTypes.filter((name) => channels.some((channel) => channel.events.includes(name))),
        ...(channels.some((channel) => channel.events.length === 0) ? [''] : [])];
    const countOf = (members, type) => members.filter((channel) => (type ? channel.events.includes(type) : channel.events.length === 0)).length;
    const counts = subsystems.map(([, members]) => types.map((type) => countOf(members, type)));
    const most = Math.max(1, ...counts.flat());
    const cell = (count, subsystem, type) => count === 0 ? make('td', {class: 'empty'}, '·') : make('td', {
        style: `--heat: ${(8 + 42 * Math.log(1 + count) / Math.log(1 + most)).toFixed(1)}%`,
    }, make('a', {
        href: '#channels', 'aria-label': `${counted(count, 'channels')}, ${subsystem || 'no subsystem'}, ${type || 'no event type'}`,
        click: () => { clearFilters(); choose('subsystem', subsystem); choose('event', type); },
    }, numberText(count)));
    return make('section', {}, make('h2', {}, 'Channels by subsystem and event type'),
        make('div', {class: 'wide-content', tabindex: 0, role: 'region', 'aria-label': 'Map of event types and subsystems'}, make('table', {class: 'heat'},
            make('thead', {}, make('tr', {}, make('th', {scope: 'col'}, 'Subsystem'),
                types.map((type) => make('th', {scope: 'col', class: 'slanted'}, make('span', {}, type || '(none)'))),
                make('th', {scope: 'col', class: 'slanted'}, make('span', {}, 'All')))),
            make('tbody', {}, subsystems.map(([subsystem, members], row) => make('tr', {},
                make('th', {scope: 'row'}, subsystem || '(none)'),
                types.map((type, column) => cell(counts[row][column], subsystem, type)),
                make('td', {class: 'sum'}, numberText(members.length))))))));
}

/** Bounds of the bars: 1, 2, 5, 10 and so on, up to the largest size. */
function sizeBins() {
    const largest = channels.reduce((most, channel) => Math.max(most, channel.max_size), 1);
    const bins = [];
    for (let power = 1; power <= largest; power *= 10)
        for (const step of [1, 2, 5])
            if (power * step <= largest)
                bins.push({from: power * step, to: power * (step === 1 ? 2 : step === 2 ? 5 : 10), count: 0});
    for (const channel of channels) {
        const bin = bins.findLast(({from}) => channel.max_size >= from) || bins[0];
        ++bin.count;
    }
    return bins;
}

const shortNumber = (number) => number >= 1e6 ? number / 1e6 + 'M' : number >= 1e3 ? number / 1e3 + 'k' : String(number);

function sizePicture() {
    const bins = sizeBins(), width = 46, height = 170;
    const most = Math.max(1, ...bins.map((bin) => bin.count));
    const said = bins.filter((bin) => bin.count)
        .map((bin) => `${counted(bin.count, 'channels')} from ${numberText(bin.from)}`).join(', ');
    return make('section', {}, make('h2', {}, 'Largest size of one data item'),
        make('div', {class: 'wide-content', tabindex: 0, role: 'region', 'aria-label': 'Picture of sizes'}, draw('svg', {
            class: 'sizes', role: 'img', 'aria-label': 'Channels by size: ' + said,
            width: bins.length * width, height: height + 44, viewBox: `0 0 ${bins.length * width} ${height + 44}`,
        }, bins.map((bin, at) => {
            const bar = bin.count ? Math.max(2, height * bin.count / most) : 0, middle = at * width + width / 2;
            return draw('g', {},
                draw('rect', {x: at * width + 4, y: height + 18 - bar, width: width - 8, height: bar, rx: 2},
                    draw('title', {}, `${counted(bin.count, 'channels')}: size ${numberText(bin.from)} to ${numberText(bin.to - 1)}`)),
                bin.count ? draw('text', {x: middle, y: height + 12 - bar}, numberText(bin.count)) : null,
                draw('text', {x: middle, y: height + 36, class: 'axis'}, shortNumber(bin.from)));
        }), draw('line', {x1: 0, x2: bins.length * width, y1: height + 18.5, y2: height + 18.5}))));
}

/** How the sizes of all channels, added up, are shared by the subsystems. */
function sizeShares() {
    const sums = [...groupBy(channels, (channel) => channel.subsystem)]
        .map(([name, members]) => ({name, sum: members.reduce((sum, channel) => sum + Math.max(0, channel.max_size), 0)}))
        .sort((a, b) => b.sum - a.sum);
    const all = sums.reduce((sum, one) => sum + one.sum, 0) || 1;
    return make('section', {}, make('h2', {}, 'Sizes added up, by subsystem'),
        make('table', {class: 'shares'}, make('tbody', {}, sums.map(({name, sum}) => make('tr', {},
            make('th', {scope: 'row'}, name || '(none)'),
            make('td', {class: 'number'}, numberText(sum)),
            make('td', {class: 'bar', 'aria-hidden': 'true'}, make('span', {style: `width: ${(100 * sum / sums[0].sum || 0).toFixed(2)}%`})),
            make('td', {class: 'number'}, (100 * sum / all).toFixed(1) + ' %'))))));
}

function documentTable() {
    return make('section', {}, make('h2', {}, 'Documents'), make('table', {class: 'plain'},
        make('thead', {}, make('tr', {}, ['Document', 'Kind', 'Records', 'State'].map((title) => make('th', {scope: 'col'}, title)))),
        make('tbody', {}, catalogue.documents.map((one) => make('tr', {},
            make('td', {}, make('code', {}, one.name)), make('td', {}, one.kind), make('td', {class: 'number'}, numberText(one.records.length)),
            one.complete ? make('td', {}, 'complete') : make('td', {class: 'lost'}, '⚠ faulty: read up to the fault'))))));
}

function lostTable() {
    const most = 200;
    return lostNames.length === 0 ? null : make('section', {}, make('h2', {}, `Names that point nowhere (${numberText(lostNames.length)})`),
        make('table', {class: 'plain'},
            make('thead', {}, make('tr', {}, ['Name', 'Named in'].map((title) => make('th', {scope: 'col'}, title)))),
            make('tbody', {}, lostNames.slice(0, most).map(({name, place, view}) => make('tr', {},
                make('td', {class: 'lost'}, '⚠ ', name), make('td', {}, make('a', {href: '#' + view}, place)))))),
        lostNames.length > most ? make('p', {class: 'note'}, `and ${numberText(lostNames.length - most)} more, marked where they stand`) : null);
}

function overview() {
    return make('div', {class: 'page'}, documentTable(), lostTable(),
        channels.length ? [heatMap(), sizePicture(), sizeShares()] : null);
}
