// Elements and small texts. Texts of records reach the page as text nodes and attributes only.

/** Makes an element. Attributes that are functions listen; null children are left out. */
function make(tag, attributes = {}, ...children) {
    return fill(document.createElement(tag), attributes, ...children);
}

/** The same for a part of a picture. */
function draw(tag, attributes = {}, ...children) {
    return fill(document.createElementNS('http://www.w3.org/2000/svg', tag), attributes, ...children);
}

function fill(element, attributes, ...children) {
    for (const [name, value] of Object.entries(attributes)) {
        if (typeof value === 'function') element.addEventListener(name, value);
        else if (value !== null && value !== false) element.setAttribute(name, value === true ? '' : value);
    }
    element.append(...children.flat(Infinity).filter((child) => child !== null && child !== undefined));
    return element;
}

/** A table. A heading or a cell may be a cell element of its own; rows are lists of cells. */
function makeTable(attributes, titles, rows, caption) {
    const cell = (what, tag, given) => (/^T[HD]$/.test(what.tagName) ? what : make(tag, given, what));
    return make(
        'table',
        attributes,
        caption ? make('caption', {}, caption) : null,
        titles.length
            ? make(
                  'thead',
                  {},
                  make(
                      'tr',
                      {},
                      titles.map((title) => cell(title, 'th', { scope: 'col' })),
                  ),
              )
            : null,
        make(
            'tbody',
            {},
            rows.map((cells) =>
                make(
                    'tr',
                    {},
                    cells.map((what) => cell(what, 'td', {})),
                ),
            ),
        ),
    );
}

const byId = (id) => document.getElementById(id);
const numberText = (number) => number.toLocaleString('en-US');
const counted = (count, nouns) =>
    `${numberText(count)} ${count === 1 ? nouns.replace(/ies$/, 'y').replace(/s$/, '') : nouns}`;
const hexadecimal = (mask) => '0x' + (mask >>> 0).toString(16);

/** A text by which names sort as people expect: A2 before A10. */
const sortText = (text) => text.toLowerCase().replace(/\d+/g, (digits) => digits.padStart(10, '0'));

function groupBy(items, keyOf) {
    const groups = new Map();
    for (const item of items) {
        const key = keyOf(item);
        if (!groups.has(key)) groups.set(key, []);
        groups.get(key).push(item);
    }
    return groups;
}
