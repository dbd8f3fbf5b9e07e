// A table of any length: only the rows that can be seen are in the page.

const ROW_HEIGHT = 30; // as in the style
const MOST_PRINTED = 5000;

class Table {
    /**
     * A column has a title, a width, `text(row)` and, if cells are more than this, `cell(row)`. `least` tells the
     * narrowest table that has it: 'narrow', 'medium' (beside details), or a wide one. `open(row)` is called for Enter
     * and a click, `move(row)` when the arrows have left another row.
     */
    constructor({ name, label, columns, rows, open, move }) {
        Object.assign(this, { name, columns, rows, open, move, shown: rows, active: -1, sorted: null });
        this.head = make(
            'div',
            { class: 'row head', role: 'row' },
            columns.map((column, at) => this.heading(column, at)),
        );
        this.body = make('div', { class: 'rows', role: 'rowgroup' });
        this.space = make('div', { class: 'space', role: 'presentation' }, this.body);
        this.scroller = make(
            'div',
            { class: 'scroller', role: 'presentation', scroll: () => this.drawSoon() },
            this.space,
        );
        this.element = make(
            'div',
            {
                class: 'table',
                role: 'grid',
                tabindex: 0,
                'aria-label': label,
                keydown: (event) => this.key(event),
            },
            make('div', { role: 'rowgroup' }, this.head),
            this.scroller,
        );
        const widths = (all) => all.map((column) => column.width).join(' ');
        this.element.style.setProperty('--columns', widths(columns));
        this.element.style.setProperty('--medium-columns', widths(columns.filter((column) => column.least)));
        this.element.style.setProperty(
            '--narrow-columns',
            widths(columns.filter((column) => column.least === 'narrow')),
        );
        new ResizeObserver(() => this.draw()).observe(this.scroller);
    }

    heading(column, at) {
        return make(
            'div',
            { role: 'columnheader', 'aria-colindex': at + 1, class: this.cellClass(column) },
            make('button', { type: 'button', click: () => this.sort(at) }, column.title),
        );
    }
    cellClass(column) {
        return (column.least || 'wide') + (column.isNumber ? ' number' : '');
    }

    /** Shows the rows for which `wanted` is true. */
    filter(wanted) {
        const kept = this.shown[this.active];
        this.wanted = wanted;
        this.shown = this.rows.filter(wanted);
        this.active = kept ? this.shown.indexOf(kept) : -1;
        this.scroller.scrollTop = 0;
        this.draw();
    }

    /** Sorts by the column; a second time the other way round. */
    sort(at) {
        const isDown = this.sorted && this.sorted.at === at && !this.sorted.isDown;
        const column = this.columns[at];
        const kept = this.shown[this.active];
        const keys = new Map(
            this.rows.map((row) => [row, column.isNumber ? column.number(row) : sortText(column.text(row))]),
        );
        const order = (a, b) => {
            const x = keys.get(a),
                y = keys.get(b);
            return x < y ? -1 : x > y ? 1 : a.id - b.id;
        };
        this.rows = [...this.rows].sort(isDown ? (a, b) => order(b, a) : order);
        this.sorted = { at, isDown };
        [...this.head.children].forEach((cell, i) =>
            i === at
                ? cell.setAttribute('aria-sort', isDown ? 'descending' : 'ascending')
                : cell.removeAttribute('aria-sort'),
        );
        this.shown = this.wanted ? this.rows.filter(this.wanted) : this.rows;
        this.active = kept ? this.shown.indexOf(kept) : -1;
        this.draw();
    }

    drawSoon() {
        if (!this.pending)
            this.pending = requestAnimationFrame(() => {
                this.pending = 0;
                this.draw();
            });
    }

    draw(isForPrint = false) {
        const { scrollTop, clientHeight } = this.scroller;
        const first = isForPrint ? 0 : Math.max(0, Math.floor(scrollTop / ROW_HEIGHT) - 5);
        const last = Math.min(
            this.shown.length,
            isForPrint ? MOST_PRINTED : Math.ceil((scrollTop + clientHeight) / ROW_HEIGHT) + 5,
        );
        this.head.style.paddingRight = `${this.scroller.offsetWidth - this.scroller.clientWidth}px`; // of the scroll bar
        this.space.style.height = `${this.shown.length * ROW_HEIGHT}px`;
        this.body.style.transform = `translateY(${first * ROW_HEIGHT}px)`;
        this.element.setAttribute('aria-rowcount', this.shown.length + 1);
        const rows = [];
        for (let at = first; at < last; ++at) rows.push(this.row(at));
        if (this.shown.length === 0)
            rows.push(
                make('div', { class: 'note', role: 'row' }, make('div', { role: 'gridcell' }, 'Nothing matches.')),
            );
        if (isForPrint && last < this.shown.length)
            rows.push(make('div', { class: 'note' }, `and ${numberText(this.shown.length - last)} more`));
        this.body.replaceChildren(...rows);
        if (this.active >= first && this.active < last)
            this.element.setAttribute('aria-activedescendant', `${this.name}-${this.active}`);
        else this.element.removeAttribute('aria-activedescendant');
    }

    row(at) {
        const row = this.shown[at];
        return make(
            'div',
            {
                class: 'row',
                role: 'row',
                id: `${this.name}-${at}`,
                'aria-rowindex': at + 2,
                'aria-selected': String(at === this.active),
                click: (event) => {
                    if (!event.target.closest('a')) {
                        this.active = at;
                        this.draw();
                        this.open(row);
                    }
                },
            },
            this.columns.map((column) =>
                make(
                    'div',
                    { role: 'gridcell', class: this.cellClass(column), title: column.text(row) },
                    column.cell ? column.cell(row) : column.text(row),
                ),
            ),
        );
    }

    /** Makes the row the active one and scrolls to it. */
    show(at) {
        if (this.shown.length === 0) return;
        this.active = Math.max(0, Math.min(this.shown.length - 1, at));
        const top = this.active * ROW_HEIGHT,
            { scrollTop, clientHeight } = this.scroller;
        if (top < scrollTop) this.scroller.scrollTop = top;
        else if (top + ROW_HEIGHT > scrollTop + clientHeight) this.scroller.scrollTop = top + ROW_HEIGHT - clientHeight;
        this.draw();
    }
    showRow(row) {
        this.show(this.shown.indexOf(row));
    }

    key(event) {
        if (event.target.closest('button, a') || event.ctrlKey || event.altKey || event.metaKey) return;
        const page = Math.max(1, Math.floor(this.scroller.clientHeight / ROW_HEIGHT) - 1);
        const places = {
            ArrowDown: this.active + 1,
            ArrowUp: this.active - 1,
            PageDown: this.active + page,
            PageUp: this.active - page,
            Home: 0,
            End: this.shown.length - 1,
        };
        if (event.key in places) {
            this.show(places[event.key]);
            this.move(this.shown[this.active]);
        } else if (event.key === 'Enter' && this.active >= 0) {
            this.open(this.shown[this.active]);
        } else {
            return;
        }
        event.preventDefault();
    }
}
