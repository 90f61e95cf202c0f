// Not every version of the theme has dark colours for a browser that asks for them, but all have the
// dark theme.
const dark = matchMedia("(prefers-color-scheme: dark)");
const follow = () => { document.body.dataset.theme = dark.matches ? "dark" : "light"; };
dark.addEventListener("change", follow);
follow();
