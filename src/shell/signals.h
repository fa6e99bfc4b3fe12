#pragma once

namespace verlis {

class App;

// Ends the run as the user's quit does when the system asks for it: SIGTERM
// (a session or service manager), SIGHUP (a closed terminal) and SIGINT
// (Ctrl+C) close the window, which saves the settings and ends with status 0.
// The session manager's request to save its clients' data saves them too, and
// so does a display connection that breaks, where the toolkit ends the
// process at once. Called once, with the event loop about to run.
void quitOnSystemRequests(App &app);

} // namespace verlis
