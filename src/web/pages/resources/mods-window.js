
function fnOpenMods() {
  window.open("", "mods", "directories=no,fullscreen=no,height=380,width=450,location=no,menubar=no,toolbar=no,resizable=yes");
  document.forms.namedItem("OpenMods").submit();
}
