
const told = document.querySelector("td.message");
const done = /(Updated|Deleted|successful)\s*$/.test(told.textContent);
told.classList.add(done ? "done" : "failed");
told.setAttribute("role", done ? "status" : "alert");
