;;; Works on an example in Emacs with the mode and eglot, as a user would.  -*- lexical-binding: t; -*-
;; Run by editors_test.py in a folder with solver.def, night.opt and optxv.json; the environment names the command.

(require 'eglot)
(setq optxv-command (list (getenv "OPTXV_COMMAND") "lsp")
      eglot-sync-connect t
      eglot-send-changes-idle-time 0
      make-backup-files nil
      create-lockfiles nil)

(defun await (what condition)
  "Wait until CONDITION holds and give what it gave; WHAT is waited for."
  (let ((end (+ (float-time) 10)) found)
    (while (not (setq found (funcall condition)))
      (when (> (float-time) end) (error "Waited in vain: %s" what))
      (accept-process-output nil 0.02))
    found))

(defun line-there (line)
  "Whether the buffer has LINE."
  (member line (split-string (buffer-string) "\n")))

(defun told ()
  "The messages of the buffer."
  (flymake-start)
  (mapcar #'flymake-diagnostic-text (flymake-diagnostics)))

(defun hovered ()
  "The help at point, once it has come."
  (let (text)
    (eglot-hover-eldoc-function (lambda (help &rest _) (setq text help)))
    (await "the help" (lambda () text))))

;; Emacs asks before it changes a file that it does not show.
(find-file-noselect "solver.def")
(find-file "night.opt")
(unless (eq major-mode 'optxv-parameters-mode) (error "The mode is %s" major-mode))
(eglot-ensure)
(run-hooks 'post-command-hook)
(await "the server" #'eglot-current-server)
(await "the fault of the file"
       (lambda () (seq-some (lambda (text) (string-match-p "Unknown option \"metod\"" text)) (told))))

(goto-char (point-min))
(search-forward "metod")
(replace-match "metho")
(eglot--signal-textDocument/didChange)
(completion-at-point)
(unless (line-there "method = dual") (error "Not completed: %s" (buffer-string)))
(eglot--signal-textDocument/didChange)
(await "the fault to be gone" (lambda () (null (told))))

(unless (string-match-p "Method for the linear relaxation" (hovered)) (error "No help"))

(eglot-rename "lp_method")
(await "the new name here" (lambda () (line-there "lp_method = dual")))
(with-current-buffer (find-file-noselect "solver.def")
  (unless (string-match-p "^lp_method  enumstr" (buffer-string)) (error "The definition has the old name"))
  (save-buffer))

(let ((before (buffer-string))
      (wanted (with-temp-buffer
                (let ((text (with-current-buffer "night.opt" (buffer-string))))
                  (insert text)
                  (call-process-region (point-min) (point-max) (car optxv-command) t t nil "format" "solver.def" "-")
                  (buffer-string)))))
  (when (equal before wanted) (error "The text is to change"))
  (eglot-format-buffer)
  (unless (equal (buffer-string) wanted) (error "Formatted: %s" (buffer-string))))

(dolist (buffer (buffer-list))
  (with-current-buffer buffer (set-buffer-modified-p nil)))
(eglot-shutdown-all)
