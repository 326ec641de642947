;;; optxv-mode.el --- Parameter files and option definitions  -*- lexical-binding: t; -*-

;; Version: 2.0.0
;; Package-Requires: ((emacs "28.1") (eglot "1.9"))
;; Keywords: languages, tools

;;; Commentary:

;; Two modes with colours, and the language server of the command optxv through eglot:
;; M-x eglot in such a buffer, or (add-hook 'optxv-parameters-mode-hook #'eglot-ensure).

;;; Code:

(defgroup optxv nil
  "Parameter files and option definitions."
  :group 'languages)

(defcustom optxv-command '("optxv" "lsp")
  "The language server, with its arguments."
  :type '(repeat string))

(defvar optxv-mode-syntax-table
  (let ((table (make-syntax-table)))
    (modify-syntax-entry ?_ "w" table)
    (modify-syntax-entry ?\" "." table)
    (modify-syntax-entry ?' "." table)
    table)
  "Words have underscores; quotes are left to the colours: texts hold single ones.")

(defconst optxv--number
  "[-+]?\\(?:\\$[[:xdigit:]]+\\|0[xX][[:xdigit:]]+\\|\\(?:[0-9]+\\.?[0-9]*\\|\\.[0-9]+\\)\\(?:[eEdD][-+]?[0-9]+\\)?\\)"
  "A number of either language.")

(defun optxv--find-number (limit)
  "Find the next number before LIMIT; group 1 is its place.
What ends a number is not passed: it may begin the next one."
  (when (re-search-forward (concat "[ \t=:,]\\(" optxv--number "\\)\\(?:[ \t:,]\\|$\\)") limit t)
    (goto-char (match-end 1))))

(defconst optxv-parameters-font-lock-keywords
  `(("^\\*.*$" . font-lock-comment-face)
    ("\\(?:^\\|[ \t\"]\\)\\([!#].*\\)$" 1 font-lock-comment-face)
    ("\"[^\"\n]*\"\\|'[^'\n]*'" . font-lock-string-face)
    ("^[ \t]*[-/]\\{2,\\}[[:alpha:]]\\w*" . font-lock-preprocessor-face)
    ("^[ \t]*\\([[:alpha:]]\\w*\\)\\(\\.[[:alpha:]]\\w*\\)"
     (1 font-lock-constant-face)
     (2 font-lock-variable-name-face))
    ("^[ \t]*[-/]?\\([[:alpha:]]\\w*\\)\\(?:[ \t=]\\|$\\)" 1 font-lock-variable-name-face)
    (optxv--find-number 1 font-lock-constant-face)
    (,(regexp-opt '("yes" "no" "on" "off" "true" "false" "maxint" "minint" "maxdouble" "mindouble" "eps") 'words)
     . font-lock-constant-face))
  "Colours of parameter text.")

(defconst optxv-definition-font-lock-keywords
  `(("^\\*.*$" . font-lock-comment-face)
    ;; A line that begins otherwise ends the definition: nothing after it is read.
    ("^\\(?:[^[:alpha:].* \n]\\|\\.[^[:alpha:]]\\)\\(?:.\\|\n\\)*" . font-lock-comment-face)
    (,(concat "^\\(\\.?[[:alpha:]]\\w*\\)[ \t]+"
              (regexp-opt '("integer" "double" "string" "boolean" "enumstr" "enumint" "multilist" "strlist" "macro"
                            "immediate" "synonym" "group" "deprecated" "obsolete" "indicator" "lookup" "eolcomm")
                          t)
              "\\(\\.\\(?:nv\\|opt\\|two\\)\\)?\\(?:[ \t]\\|$\\)")
     (1 font-lock-variable-name-face)
     (2 font-lock-type-face)
     (3 font-lock-keyword-face nil t))
    ("\"[^\"\n]*\"" . font-lock-string-face)
    ("^ .*$" . font-lock-doc-face))
  "Colours of a definition.")

(defun optxv--prepare (keywords)
  "Set up the buffer with KEYWORDS, those of its language."
  (setq-local comment-start "* "
              comment-start-skip "^\\* *"
              comment-column 0
              font-lock-defaults (list keywords t t)))

;;;###autoload
(define-derived-mode optxv-parameters-mode prog-mode "Parameters"
  "Major mode for parameter files."
  :syntax-table optxv-mode-syntax-table
  (optxv--prepare 'optxv-parameters-font-lock-keywords))

;;;###autoload
(define-derived-mode optxv-definition-mode prog-mode "Definition"
  "Major mode for option definitions."
  :syntax-table optxv-mode-syntax-table
  (optxv--prepare 'optxv-definition-font-lock-keywords))

;;;###autoload
(progn
  (add-to-list 'auto-mode-alist '("\\.opt\\'" . optxv-parameters-mode))
  (add-to-list 'auto-mode-alist '("\\.def\\'" . optxv-definition-mode))
  (add-to-list 'magic-mode-alist '("\\*[ \t]*optxv:[ \t]*definition\\>" . optxv-parameters-mode)))

(defvar eglot-server-programs)

(defun optxv--contact (&optional _interactive)
  "The server as eglot starts it."
  optxv-command)

;; The ids of the two languages differ from the names of the modes.
(put 'optxv-parameters-mode 'eglot-language-id "optxv-parameters")
(put 'optxv-definition-mode 'eglot-language-id "optxv-definition")

(with-eval-after-load 'eglot
  (add-to-list 'eglot-server-programs
               '((optxv-parameters-mode optxv-definition-mode) . optxv--contact)))

(provide 'optxv-mode)
;;; optxv-mode.el ends here
