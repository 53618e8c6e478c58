// Searches the sections of the site, which index.js holds, for all words of a query;
// sections that have them in their titles come first.
const query = document.getElementById("query");
const found = document.getElementById("found");
const most = 20;

// A word is found where a word begins with it, and counts more where it is all of one.
const beginning = word => new RegExp("(^|[^a-z0-9])" + word.replace(/\W/g, "\\$&"));
const whole = word => new RegExp(beginning(word).source + "($|[^a-z0-9_])");

function rank(section, words) {
    const title = section.title.toLowerCase();
    const text = title + " " + section.text;
    const count = (pattern, where) => words.filter(word => pattern(word).test(where)).length;
    if (count(beginning, text) < words.length)
        return 0;
    return 1 + count(whole, text) + 4 * count(beginning, title) + 4 * count(whole, title);
}

function show() {
    const words = query.value.toLowerCase().split(/\s+/).filter(word => word);
    const ranked = words.length === 0 ? [] : sections
        .map(section => ({section, rank: rank(section, words)}))
        .filter(each => each.rank > 0)
        .sort((a, b) => b.rank - a.rank)
        .slice(0, most);
    found.replaceChildren(...ranked.map(({section}) => {
        const link = document.createElement("a");
        link.href = section.link;
        link.textContent = section.title;
        const page = document.createElement("small");
        page.textContent = section.page;
        const item = document.createElement("li");
        item.append(link, page);
        return item;
    }));
    if (words.length > 0 && ranked.length === 0)
        found.textContent = "Nothing is found.";
    found.hidden = words.length === 0;
}

query.addEventListener("input", show);
query.addEventListener("keydown", event => {
    if (event.key === "Escape")
        query.value = "";
    if (event.key === "Enter" && found.querySelector("a"))
        found.querySelector("a").click();
    show();
});
// A query may come with the address: index.html?q=strftime
const asked = new URLSearchParams(location.search).get("q");
if (asked) {
    query.value = asked;
    show();
}

// Beside the page where there is room, else above it and shut.
const contents = document.querySelector("#site-contents details");
const wide = matchMedia("(min-width: 768px)");
contents.open = wide.matches;
wide.addEventListener("change", () => contents.open = wide.matches);
