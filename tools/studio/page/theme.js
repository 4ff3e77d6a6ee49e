// The page's colours: the system's, or as the reader chose. Runs before anything is painted.

(() => {
  const kName = "theme";
  const root = document.documentElement;

  function kept() {
    try { return localStorage.getItem(kName) ?? "system"; } catch { return "system"; }
  }

  function keep(theme) {
    try { localStorage.setItem(kName, theme); } catch { /* it holds until the page is left */ }
  }

  root.dataset.theme = kept();
  addEventListener("DOMContentLoaded", () => {
    const select = document.getElementById("theme");
    const show = (theme) => { root.dataset.theme = select.value = theme; };
    show(root.dataset.theme);
    select.addEventListener("change", () => { keep(select.value); show(select.value); });
    addEventListener("storage", ({ key }) => { if (key === kName) show(kept()); }); // of another tab
  });
})();
