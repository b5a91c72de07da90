// The page's tasks, one tab each.
const tabs = [...document.querySelectorAll('[role=tab]')];

function panelOf(tab) {
    return document.querySelector(`#${tab.getAttribute('aria-controls')}`);
}

function select(tab) {
    for (const each of tabs) {
        each.setAttribute('aria-selected', String(each === tab));
        each.tabIndex = each === tab ? 0 : -1;
        panelOf(each).hidden = each !== tab;
    }
}

/** For a part of the page that the user leaves with it. @param {'look'|'picture'|'match'} name */
export function showTab(name) {
    const tab = document.querySelector(`#tab-${name}`);
    select(tab);
    tab.focus();
}

function neighbour(at, key) {
    switch (key) {
    case 'ArrowRight': return tabs[(at + 1) % tabs.length];
    case 'ArrowLeft': return tabs.at(at - 1);
    case 'Home': return tabs[0];
    case 'End': return tabs.at(-1);
    }
}

export function startTabs() {
    tabs.forEach((tab, at) => {
        tab.addEventListener('click', () => select(tab));
        tab.addEventListener('keydown', (event) => {
            const other = neighbour(at, event.key);
            if (!other) return;
            event.preventDefault();
            select(other);
            other.focus();
        });
    });
}
