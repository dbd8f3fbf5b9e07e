// Which records are shown: the words of the search box, for all tables, and the lists above the channels.

const channelFilters = [
    { name: 'event', label: 'Event type', valuesOf: (channel) => channel.events },
    { name: 'block', label: 'Data type', valuesOf: (channel) => channel.blocks },
    { name: 'stream', label: 'Stream', valuesOf: (channel) => [String(channel.stream)] },
    { name: 'subsystem', label: 'Subsystem', valuesOf: (channel) => [channel.subsystem] },
];
const chosen = {}; // by the name of the filter; an empty list: anything. NONE: no value
const NONE = '\u0000';

const wordsOf = (text) =>
    text
        .toLowerCase()
        .split(/\s+/)
        .filter((word) => word);
const searchedWords = () => wordsOf(byId('search').value);
const hasWords = (record, words) => words.every((word) => record.text.includes(word));

function isWanted(channel, words) {
    for (const { name, valuesOf } of channelFilters) {
        const wanted = chosen[name];
        if (wanted === undefined) continue;
        const values = valuesOf(channel);
        if (wanted === NONE ? values.some((value) => value) : !values.includes(wanted)) return false;
    }
    return hasWords(channel, words);
}

function clearFilters() {
    for (const { name } of channelFilters) choose(name, undefined);
    byId('search').value = '';
}

function choose(name, value) {
    if (value === undefined) delete chosen[name];
    else chosen[name] = value === '' ? NONE : value;
    const list = byId('filter-' + name);
    if (list) list.value = value === undefined ? '' : '=' + value;
}

/** A list of the values that channels have, with how many have each. */
function filterList({ name, label, valuesOf }, changed) {
    const counts = new Map();
    for (const channel of channels) {
        const values = valuesOf(channel);
        for (const value of values.length ? values : ['']) counts.set(value, (counts.get(value) || 0) + 1);
    }
    const values = [...counts.keys()].sort((a, b) => (sortText(a) < sortText(b) ? -1 : 1));
    const list = make(
        'select',
        {
            id: 'filter-' + name,
            change: () => {
                choose(name, list.value ? list.value.slice(1) : undefined);
                changed();
            },
        },
        make('option', { value: '' }, 'any'),
        values.map((value) =>
            make('option', { value: '=' + value }, `${value || '(none)'} · ${numberText(counts.get(value))}`),
        ),
    );
    list.value = chosen[name] === undefined ? '' : '=' + (chosen[name] === NONE ? '' : chosen[name]);
    return make('label', {}, make('span', {}, label), list);
}

/** The lists above the channels; `changed` is called after each change. */
function filterBar(changed) {
    return make(
        'form',
        { class: 'filters', 'aria-label': 'Filters', submit: (event) => event.preventDefault() },
        channelFilters.map((filter) => filterList(filter, changed)),
        make(
            'button',
            {
                type: 'button',
                click: () => {
                    clearFilters();
                    changed();
                },
            },
            'Clear',
        ),
        make('output', { id: 'count', for: 'search' }),
    );
}
