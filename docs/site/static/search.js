"use strict";
/* The search, over the entries that the site's build writes into searchentries.js. */

const SearchKinds = ["Recipe", "Guide", "Function", "Reference", "More"];
const SearchWeights = [9, 4, 3, 1, 0];
const SearchLimit = 40;
const SearchLeftOut = new Set("a an and as by cv color colour convert conversion converter do for from get how i in into is it my of on or the to using via with".split(" "));
const SearchSameAs = {
    cvtcolor: "opencv", cv2: "opencv", swscale: "ffmpeg", webcam: "camera", grayscale: "gray", greyscale: "gray", grey: "gray",
    i420: "yuv420p", jpg: "jpeg", demosaic: "bayer", debayer: "bayer", crop: "part", flip: "bottom", upside: "bottom", hd: "709",
    lcd: "display", installation: "install", numpy: "python",
};

/* The words of a query: COLOR_YUV2BGR_NV12 and NV12ToRGB24 are taken apart, the names of functions here are not. */
function searchWords(query) {
    const plain = query.replace(/4:([0-4]):([0-4])/g, "4$1$2").replace(/([a-z0-9])To([A-Z])/g, (all, left, right, at) =>
        /zel\w*$/.test(query.slice(0, at + 1)) ? all : `${left} ${right}`);
    const found = plain.toLowerCase().match(/[a-z0-9]+(?:_[a-z0-9]+)*/g) || [];
    const apart = found.flatMap(word => word.startsWith("zel") ? [word] : word.split("_"))
        .flatMap(word => /^[a-z]+2[a-z]+$/.test(word) ? word.split("2") : [word]);
    const kept = apart.filter(word => !SearchLeftOut.has(word));
    return [...new Set(kept.length ? kept : apart)];
}

/* How well a word is among others: whole, but for its plural, or as their beginning. */
function searchNearness(word, words) {
    const single = word.length > 3 ? word.replace(/s$/, "") : word;
    let best = 0;
    for (const other of words) {
        if (other === word || other === single || (other.length > 3 && other.replace(/s$/, "") === single)) return 1;
        if (word.length > 2 && other.startsWith(single)) best = 0.5;
    }
    return best;
}

class SearchEntry {
    constructor([kind, title, address, of, text, words, sources, targets], formats) {
        Object.assign(this, {kind, title, address, of, text});
        const names = numbers => new Set(numbers.flatMap(number => formats[number]));
        this.titleWords = searchWords(title);
        this.words = new Set(words ? words.split(" ") : []);
        this.sources = names(sources);
        this.targets = names(targets);
        this.name = kind === 2 ? title.toLowerCase() : "";
    }

    /* How many of the words are here, and how well. */
    measure(words) {
        let found = 0, score = SearchWeights[this.kind], source = -1, target = -1;
        words.forEach((word, place) => {
            const said = SearchSameAs[word];
            const near = set => Math.max(searchNearness(word, set), said ? searchNearness(said, set) : 0);
            const atSource = near(this.sources), atTarget = near(this.targets);
            if (source < 0 && atSource === 1) source = place;
            if (atTarget === 1) target = place;
            const inName = this.name && word.length > 2 && this.name.includes(word) ? 2 : 0;
            const best = Math.max(8 * near(this.titleWords), 5 * Math.max(atSource, atTarget), 2 * near(this.words), inName);
            found += best > 0 ? 1 : 0;
            score += best;
        });
        const places = words.map(word => this.titleWords.indexOf(word));
        if (words.length > 1 && places.every((place, i) => i ? place > places[i - 1] : place >= 0)) score += 3;
        if (source >= 0 && target > source) score += 3;
        if (this.name) score -= [...this.words].filter(word => !words.includes(word)).length;  // matrices and methods that nobody asked for
        if (words.length === 1 && this.name === words[0]) score += 100;
        return {entry: this, found, score};
    }
}

/* What has most of the words comes first; where that is the same, recipes, then whatever has them in better places. */
function searchFind(query, entries) {
    const words = searchWords(query);
    if (!words.length) return [];
    const measured = entries.map(entry => entry.measure(words)).filter(({found}) => found > 0);
    const most = Math.max(0, ...measured.map(({found}) => found));
    return measured.filter(({found}) => found === most || found > 1 && found >= most - 1)
        .sort((a, b) => b.found - a.found || b.score - a.score || a.entry.title.length - b.entry.title.length).map(({entry}) => entry);
}

function searchItem(entry) {
    const item = document.createElement("li");
    const add = (tag, text, name) => {
        const part = document.createElement(tag);
        part.textContent = text;
        part.className = name;
        item.append(part);
        return part;
    };
    add("a", entry.title, "search-title").href = entry.address;
    add("span", [SearchKinds[entry.kind], entry.kind ? entry.of : ""].filter(Boolean).join(", "), "search-kind");
    if (entry.text) add("p", entry.text.length < 160 ? entry.text : entry.text.replace(/ \S*$/, " ..."), "search-text");
    return item;
}

function searchStart() {
    const formats = searchEntries.formats.map(names => names.split(" "));
    const entries = searchEntries.entries.map(fields => new SearchEntry(fields, formats));
    const input = document.getElementById("search-query");
    const show = () => {
        const found = searchFind(input.value, entries);
        const count = found.length > SearchLimit ? `The first ${SearchLimit} of ${found.length}` : `${found.length}`;
        document.getElementById("search-found").replaceChildren(...found.slice(0, SearchLimit).map(searchItem));
        document.getElementById("search-count").textContent = !input.value.trim() ? "" :
            found.length ? `${count} found` : "Nothing found. A format alone, as nv12 or bgra, leads to all that takes or makes it.";
        document.title = document.title.replace(/^.*?Search/, input.value ? `${input.value} - Search` : "Search");
    };
    input.value = new URLSearchParams(location.search).get("q") || "";
    input.addEventListener("input", show);
    input.form.addEventListener("submit", event => {
        event.preventDefault();
        show();
    });
    show();
}

searchStart();
