// The overview: documents, the map of event types and subsystems, and sizes.

const bySubsystem = () => [...groupBy(channels, (channel) => channel.subsystem)];
const isOfType = (channel, type) => (type ? channel.events.includes(type) : channel.events.length === 0);

/** A part of the overview; what is wide scrolls by itself, also with the keys. */
function part(title, content, isWide = false) {
    const room = isWide ? { class: 'wide-content', tabindex: 0, role: 'region', 'aria-label': title } : {};
    return make('section', {}, make('h2', {}, title), make('div', room, content));
}

/** A cell that leads to its channels, the warmer the more these are. */
function heatCell(count, most, subsystem, type) {
    if (count === 0) return make('td', { class: 'empty' }, '·');
    const label = `${counted(count, 'channels')}, ${subsystem || 'no subsystem'}, ${type || 'no event type'}`;
    const choosesBoth = () => {
        clearFilters();
        choose('subsystem', subsystem);
        choose('event', type);
    };
    const heat = 8 + (42 * Math.log(1 + count)) / Math.log(1 + most);
    return make(
        'td',
        { style: `--heat: ${heat.toFixed(1)}%` },
        make('a', { href: '#channels', 'aria-label': label, click: choosesBoth }, numberText(count)),
    );
}

/** How many channels of each subsystem take part in each event type. */
function heatMap() {
    const subsystems = bySubsystem().sort(([a], [b]) => (sortText(a) < sortText(b) ? -1 : 1));
    const types = [...catalogue.eventTypes, ''].filter((type) => channels.some((channel) => isOfType(channel, type)));
    const countsOf = (members) => types.map((type) => members.filter((channel) => isOfType(channel, type)).length);
    const counts = subsystems.map(([, members]) => countsOf(members));
    const most = Math.max(1, ...counts.flat());
    const heading = (text) => make('th', { scope: 'col', class: 'slanted' }, make('span', {}, text || '(none)'));
    const rows = subsystems.map(([subsystem, members], row) => [
        make('th', { scope: 'row' }, subsystem || '(none)'),
        ...types.map((type, column) => heatCell(counts[row][column], most, subsystem, type)),
        make('td', { class: 'sum' }, numberText(members.length)),
    ]);
    const table = makeTable({ class: 'heat' }, ['Subsystem', ...types.map(heading), heading('All')], rows);
    return part('Channels by subsystem and event type', table, true);
}

/** Bounds of the bars: 1, 2, 5, 10 and so on, up to the largest size. */
function sizeBins() {
    const largest = channels.reduce((most, channel) => Math.max(most, channel.max_size), 1);
    const bins = [];
    for (let power = 1; power <= largest; power *= 10)
        for (const [from, to] of [
            [1, 2],
            [2, 5],
            [5, 10],
        ])
            if (power * from <= largest) bins.push({ from: power * from, to: power * to, count: 0 });
    for (const channel of channels) ++(bins.findLast(({ from }) => channel.max_size >= from) || bins[0]).count;
    return bins;
}

const shortNumber = (number) =>
    number >= 1e6 ? number / 1e6 + 'M' : number >= 1e3 ? number / 1e3 + 'k' : String(number);

const BAR = { width: 46, height: 170, above: 18, below: 26 };

function sizeBar(bin, at, most) {
    const height = bin.count ? Math.max(2, (BAR.height * bin.count) / most) : 0;
    const foot = BAR.height + BAR.above;
    const middle = at * BAR.width + BAR.width / 2;
    const range = `${counted(bin.count, 'channels')}: size ${numberText(bin.from)} to ${numberText(bin.to - 1)}`;
    const shape = { x: at * BAR.width + 4, y: foot - height, width: BAR.width - 8, height, rx: 2 };
    return draw(
        'g',
        {},
        draw('rect', shape, draw('title', {}, range)),
        bin.count ? draw('text', { x: middle, y: foot - height - 6 }, numberText(bin.count)) : null,
        draw('text', { x: middle, y: foot + 18, class: 'axis' }, shortNumber(bin.from)),
    );
}

function sizePicture() {
    const bins = sizeBins();
    const width = bins.length * BAR.width;
    const height = BAR.above + BAR.height + BAR.below;
    const foot = BAR.above + BAR.height + 0.5;
    const most = Math.max(1, ...bins.map((bin) => bin.count));
    const said = bins
        .filter((bin) => bin.count)
        .map((bin) => `${counted(bin.count, 'channels')} from ${numberText(bin.from)}`)
        .join(', ');
    const picture = draw(
        'svg',
        { class: 'sizes', role: 'img', 'aria-label': 'Channels by size: ' + said, width, height },
        bins.map((bin, at) => sizeBar(bin, at, most)),
        draw('line', { x1: 0, x2: width, y1: foot, y2: foot }),
    );
    return part('Largest size of one data item', picture, true);
}

/** How the sizes of all channels, added up, are shared by the subsystems. */
function sizeShares() {
    const sumOf = (members) => members.reduce((sum, channel) => sum + Math.max(0, channel.max_size), 0);
    const sums = bySubsystem()
        .map(([name, members]) => ({ name, sum: sumOf(members) }))
        .sort((a, b) => b.sum - a.sum);
    const all = sumOf(channels) || 1;
    const largest = sums[0].sum || 1;
    const bar = (sum) => make('span', { style: `width: ${((100 * sum) / largest).toFixed(2)}%` });
    const rows = sums.map(({ name, sum }) => [
        make('th', { scope: 'row' }, name || '(none)'),
        make('td', { class: 'number' }, numberText(sum)),
        make('td', { class: 'bar', 'aria-hidden': 'true' }, bar(sum)),
        make('td', { class: 'number' }, ((100 * sum) / all).toFixed(1) + ' %'),
    ]);
    return part('Sizes added up, by subsystem', makeTable({ class: 'shares' }, [], rows));
}

function documentTable() {
    const rows = catalogue.documents.map((one) => [
        make('code', {}, one.name),
        one.kind,
        make('td', { class: 'number' }, numberText(one.records.length)),
        one.complete ? 'complete' : make('td', { class: 'lost' }, '⚠ faulty: read up to the fault'),
    ]);
    return part('Documents', makeTable({ class: 'plain' }, ['Document', 'Kind', 'Records', 'State'], rows));
}

const MOST_LOST = 200; // names in the table

function lostTable() {
    if (lostNames.length === 0) return null;
    const rows = lostNames
        .slice(0, MOST_LOST)
        .map(({ name, place, address }) => [
            make('td', { class: 'lost' }, '⚠ ', name),
            make('a', { href: '#' + address }, place),
        ]);
    const others = lostNames.length - MOST_LOST;
    return part(`Names that point nowhere (${numberText(lostNames.length)})`, [
        makeTable({ class: 'plain' }, ['Name', 'Named in'], rows),
        others > 0 ? make('p', { class: 'note' }, `and ${numberText(others)} more, marked where they stand`) : '',
    ]);
}

function overview() {
    return make(
        'div',
        { class: 'page' },
        documentTable(),
        lostTable(),
        channels.length ? [heatMap(), sizePicture(), sizeShares()] : null,
    );
}
