// Runs before the first paint, so that a chosen theme does not flash.
const chosenTheme = localStorage.getItem('theme');
if (chosenTheme) document.documentElement.dataset.theme = chosenTheme;
