// Views and the ways between them: the part of the address behind # names the view, and the record that is open.

const views = [
    { name: 'channels', title: 'Channels', count: channels.length },
    { name: 'overview', title: 'Overview', count: null },
    { name: 'events', title: 'Events', count: events.length },
    { name: 'dictionaries', title: 'Dictionaries', count: entries.length },
    { name: 'cameras', title: 'Cameras', count: features.length },
].filter((view) => view.count !== 0);

const recordsIn = { channels, events, dictionaries: entries, cameras: features }; // by the name of the view

let view = ''; // name of the one that is shown
let table = null; // of this view

/** Opens the record of this view. */
function openRecord(record) {
    if (location.hash === `#${view}/${record.id}`) route();
    else location.hash = `#${view}/${record.id}`;
}

/** While details are shown, they follow the arrows; the way back does not go through all of these records. */
function moveToRecord(record) {
    if (byId('details').hidden) return;
    history.replaceState(null, '', `#${view}/${record.id}`);
    showRecord(record);
}

function closeDetails() {
    hideDetails();
    if (location.hash.includes('/')) history.replaceState(null, '', '#' + view);
    if (table) table.element.focus();
}

/** Shows what the search box and the lists choose, and tells how much this is. */
function refresh() {
    if (!table) return;
    const words = searchedWords();
    table.filter(view === 'channels' ? (channel) => isWanted(channel, words) : (record) => hasWords(record, words));
    const said =
        table.shown.length === table.rows.length
            ? counted(table.rows.length, 'records')
            : `${numberText(table.shown.length)} of ${counted(table.rows.length, 'records')}`;
    byId('status').textContent = said;
    byId('count').textContent = said;
}

function showView(name) {
    view = name;
    hideDetails();
    table = tables[name] ? tables[name]() : null;
    const bar =
        name === 'channels'
            ? filterBar(refresh)
            : make('form', { class: 'filters' }, make('output', { id: 'count', for: 'search' }));
    byId('view').replaceChildren(...(table ? [bar, table.element] : [name === 'events' ? eventLists() : overview()]));
    byId('view').classList.toggle('fixed', table !== null);
    for (const link of byId('views').children)
        if (link.dataset.view === name) link.setAttribute('aria-current', 'page');
        else link.removeAttribute('aria-current');
    refresh();
}

function route() {
    const [name, id] = location.hash.slice(1).split('/');
    const known = views.some((one) => one.name === name) ? name : views[0].name;
    const record = id === undefined || !recordsIn[known] ? undefined : recordsIn[known][Number(id)];
    if (known !== view || !record) showView(known);
    if (record) showRecord(record);
}

/** Shows the record of this view, whatever was searched before. */
function showRecord(record) {
    if (!table) {
        byId('event-' + record.id).scrollIntoView();
        byId('event-' + record.id).focus();
        return;
    }
    if (!table.shown.includes(record)) {
        clearFilters();
        refresh();
    }
    if (view === 'channels') showDetails(record.daq_name || record.prop_name, channelDetails(record));
    if (view === 'cameras') showDetails(record.name, featureDetails(record));
    table.showRow(record); // after the details have taken their room
}

/** Typing in a view without a table searches the channels. */
function search() {
    if (!table && channels.length)
        location.hash = '#channels'; // which shows what is searched
    else refresh();
}

function key(event) {
    const isTyping = event.target.closest('input, select, textarea');
    if (event.key === '/' && !isTyping && !event.ctrlKey && !event.metaKey && !event.altKey) {
        event.preventDefault();
        byId('search').select();
    } else if (event.key === 'Escape' && !byId('details').hidden) {
        event.preventDefault();
        closeDetails();
    } else if (event.key === 'Escape' && event.target === byId('search') && table) {
        event.target.value = '';
        refresh();
        table.element.focus();
    } else if ((event.key === 'ArrowDown' || event.key === 'Enter') && event.target === byId('search') && table) {
        event.preventDefault();
        table.element.focus();
        table.show(Math.max(0, table.active));
        if (event.key === 'Enter' && table.active >= 0) table.open(table.shown[table.active]);
    }
}

// Light and dark: as the system has it, until the switch is used

const themes = { auto: '◐ Auto', light: '☀ Light', dark: '☾ Dark' };

function setTheme(name) {
    if (name === 'auto') delete document.documentElement.dataset.theme;
    else document.documentElement.dataset.theme = name;
    byId('theme').textContent = themes[name];
    byId('theme').setAttribute('aria-label', `Colours: ${name}. Change`);
    byId('theme').dataset.theme = name;
    try {
        localStorage.setItem('zeb5xml-theme', name);
    } catch {
        /* a page of a file may have no storage */
    }
}

function storedTheme() {
    try {
        const name = localStorage.getItem('zeb5xml-theme');
        return name in themes ? name : 'auto';
    } catch {
        return 'auto';
    }
}

byId('theme').addEventListener('click', (event) => {
    const names = Object.keys(themes);
    setTheme(names[(names.indexOf(event.target.dataset.theme) + 1) % names.length]);
});
byId('search').addEventListener('input', search);
document.addEventListener('keydown', key);
window.addEventListener('hashchange', route);
window.addEventListener('beforeprint', () => {
    if (table) table.draw(true);
});
window.addEventListener('afterprint', () => {
    if (table) table.draw();
});

byId('title').textContent = document.title = catalogue.title;
byId('views').append(
    ...views.map(({ name, title, count }) =>
        make(
            'a',
            { href: '#' + name, 'data-view': name },
            title,
            count === null ? null : make('span', { class: 'quiet' }, ' ' + numberText(count)),
        ),
    ),
);
setTheme(storedTheme());
route();
document.documentElement.dataset.ready = 'true';
